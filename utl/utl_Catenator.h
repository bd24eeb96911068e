// A growing string for texts that are built piece by piece. It starts in a string with 992
// bytes reserved up front, so that the common short text never allocates twice; a text that
// would reach 992 bytes moves, once and for good, into a memory stream that grows freely.
//
//   utl_Catenator text;
//   text.Cat("step ", 5).Cat(name.c_str(), name.Length());
//   cow_String result = text.GetString();
//
// Nothing is thrown but by allocation. Threads: one thread at a time.
#ifndef UTL_CATENATOR_H
#define UTL_CATENATOR_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class aio_ostrstream;

class VRKLNU_EXPORT utl_Catenator : public mem_AllocationOperators {
 public:
  static const int kStringCapacity = 992;

  utl_Catenator();
  ~utl_Catenator();
  utl_Catenator(const utl_Catenator&) = delete;
  utl_Catenator& operator=(const utl_Catenator&) = delete;

  // Adds `length` bytes of `text`; a length of 0 or less adds nothing.
  utl_Catenator& Cat(const char* text, int length);
  // Empties the text. A catenator that has moved to its stream keeps using it.
  utl_Catenator& Erase();
  // The text. From the string, a text of 497 bytes or more is shared and a shorter one
  // copied to its own size. From the stream, the text itself is handed over and the
  // catenator is left empty, so that a second call gives the empty string.
  cow_String GetString();

 private:
  cow_String m_String;
  aio_ostrstream* m_Overflow = nullptr;  // owned; made when the string would be full
};

#endif  // UTL_CATENATOR_H
