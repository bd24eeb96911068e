#include "sto_Transfer.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "internal/sto_Bytes.h"
#include "nex_Exception.h"
#include "nex_TextException.h"
#include "sto_Store.h"

namespace {

[[noreturn]] void Fail(const atr_String& what) {
  nex_TextException error(what);
  NEX_THROW(error);
}

void WriteAll(int descriptor, const char* bytes, size_t count) {
  while (count > 0) {
    const ssize_t written = write(descriptor, bytes, count);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) Fail(nex_Translate("Cannot write a stored graph: %s", std::strerror(errno)));
    bytes += written;
    count -= static_cast<size_t>(written);
  }
}

// Reads `count` bytes into `bytes`; the number read, short only at the end of the input.
size_t ReadAll(int descriptor, char* bytes, size_t count) {
  size_t done = 0;
  while (done < count) {
    const ssize_t got = read(descriptor, bytes + done, count - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) Fail(nex_Translate("Cannot read a stored graph: %s", std::strerror(errno)));
    if (got == 0) break;
    done += static_cast<size_t>(got);
  }
  return done;
}

}  // namespace

void sto_WriteBytes(int descriptor, const cow_String& bytes) {
  sto_Output head;
  head.PutU32(static_cast<uint32_t>(bytes.Length()));
  const cow_String length = head.Take();
  WriteAll(descriptor, length.c_str(), 4);
  WriteAll(descriptor, bytes.c_str(), static_cast<size_t>(bytes.Length()));
}

cow_String sto_ReadBytes(int descriptor) {
  char head[4];
  if (ReadAll(descriptor, head, 4) != 4)
    Fail(nex_Translate("A stored graph ended before its length"));
  const uint32_t length = sto_Input(head, 4).U32(0, "length");
  if (length > 0x7ffffffe) Fail(nex_Translate("A stored graph of %u bytes", length));
  // The block grows with what arrives, so that a false length costs no more than the input.
  size_t capacity = length < 65536 ? length : 65536;
  char* bytes = static_cast<char*>(mem_OperatorNewThrow(capacity + 1));
  size_t done = 0;
  while (done < length) {
    if (done == capacity) {
      capacity = capacity * 2 < length ? capacity * 2 : length;
      char* grown = static_cast<char*>(mem_OperatorNewThrow(capacity + 1));
      std::memcpy(grown, bytes, done);
      mem_Free(bytes);
      bytes = grown;
    }
    const size_t got = ReadAll(descriptor, bytes + done, capacity - done);
    done += got;
    if (got == 0 || (done < capacity && done < length)) break;
  }
  bytes[done] = 0;
  cow_String graph(bytes, static_cast<int>(done), cow_String::Adopt);
  if (done != length)
    Fail(nex_Translate("A stored graph ended after %d of %d bytes", static_cast<int>(done),
                       static_cast<int>(length)));
  return graph;
}

void sto_WriteException(int descriptor, const nex_Exception& error) {
  sto_WriteBytes(descriptor, sto_Encode(error));
}

void sto_RaiseException(int descriptor) {
  sto_RaiseStored(sto_ReadBytes(descriptor));
}

void sto_RaiseStored(const cow_String& bytes) {
  sto_Object stored = sto_Decode(bytes);
  nex_Exception* error = stored.As<nex_Exception>();
  if (error == nullptr)
    Fail(nex_Translate("A stored graph of class %s raised as an exception",
                       stored.Metadata().Name()));
  error->Propagate();
  std::abort();  // Propagate always raises
}
