// A stream into memory. The text grows as it is written; str() gives a copy of it, and
// adoptString() hands the text itself over, leaving the stream empty.
//
//   aio_ostrstream os;
//   os << "step " << 3;
//   cow_String text = os.str();                          // "step 3"
//   char* block = os.adoptString(mem_Malloc);             // the caller now owns the text
//   cow_String owned(block, (int)strlen(block), cow_String::Adopt);
//
// The text is what lies before the write position: after seekp(0, beg) the stream reads
// as empty and new output overwrites the old. Failure to grow puts the stream in the
// failed state (see aio_ostream).
#ifndef AIO_OSTRSTREAM_H
#define AIO_OSTRSTREAM_H

#include <cstddef>

#include "VRKBasExport.h"
#include "aio_ostream.h"
#include "cow_String.h"

class VRKLNU_EXPORT aio_ostrstream : public aio_ostream {
 public:
  aio_ostrstream();
  ~aio_ostrstream() override;

  cow_String str() const;
  // Bytes written so far.
  int Length() const { return static_cast<int>(m_Next - m_Begin); }
  // The text, terminated, in a block from `allocator`, which the caller owns from now on;
  // null when the allocator fails. The stream is left empty.
  char* adoptString(void* (*allocator)(size_t));

 protected:
  bool Overflow(const char* data, size_t size) override;
  bool Seek(long long offset, seek_dir direction) override;

 private:
  // Makes room for `needed` more bytes and a terminator: the text handed over ends in '\0',
  // so the buffer always keeps one byte beyond m_End.
  bool Grow(size_t needed);
};

#endif  // AIO_OSTRSTREAM_H
