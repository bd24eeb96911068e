// Graphs and errors carried between processes: the bytes of a graph (sto_Store.h) written to a
// descriptor with their length, and read back; and an exception written so, to be raised
// again in the other process with its class, text, file and line:
//
//   catch (const nex_Exception& error) { sto_WriteException(pipeEnd, error); }   // child
//   ...
//   sto_RaiseException(otherEnd);          // parent: raises the child's error again
//
// A pipe, a socket or a file descriptor will do; the descriptor stays the caller's. Writing
// blocks until all bytes are taken, reading until a whole graph has come. Failures raise
// nex_TextException: a descriptor that fails (with the system's text), one that ends before
// a whole graph, or bytes that are no graph (see sto_Store.h). Reading allocates only for
// bytes that have arrived.
#ifndef STO_TRANSFER_H
#define STO_TRANSFER_H

#include "VRKBasExport.h"
#include "cow_String.h"

class nex_Exception;

// Four bytes of length, little-endian, then the bytes.
VRKLNU_EXPORT void sto_WriteBytes(int descriptor, const cow_String& bytes);
VRKLNU_EXPORT cow_String sto_ReadBytes(int descriptor);

VRKLNU_EXPORT void sto_WriteException(int descriptor, const nex_Exception& error);
// Reads an exception written by sto_WriteException and raises it, of its class.
[[noreturn]] VRKLNU_EXPORT void sto_RaiseException(int descriptor);
// Raises the exception whose graph `bytes` are.
[[noreturn]] VRKLNU_EXPORT void sto_RaiseStored(const cow_String& bytes);

#endif  // STO_TRANSFER_H
