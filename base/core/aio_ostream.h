// The output stream layer. aio_ostream formats text, characters and numbers into a buffer
// that a concrete stream drains: aio_ofstream to a file descriptor (aio_cerr, aio_cout and
// named files), aio_ostrstream into memory.
//
//   aio_cout << "peak ";
//   aio_setwidth(aio_cout, 10) << 1.5e9 << " bytes" << aio_endl;
//
// Numbers come out as printf would write them: integers in decimal (or octal or hex with
// those flags), doubles as "%g" with precision 6 unless `fixed` or `scientific` is set. The
// field width applies to the next formatted item only; `left` pads after it instead of
// before. put() and write() are raw: no width.
//
// Errors: when the stream fails to write or to seek, it enters the failed state; output is
// then discarded until clear(). good() tells. Nothing is thrown.
// Threads: a stream belongs to one thread at a time, like every stream object.
#ifndef AIO_OSTREAM_H
#define AIO_OSTREAM_H

#include <cstddef>

#include "VRKBasExport.h"

class VRKLNU_EXPORT aio_ios {
 public:
  enum {
    left = 0x0001,
    right = 0x0002,
    dec = 0x0010,
    oct = 0x0020,
    hex = 0x0040,
    showbase = 0x0080,
    showpoint = 0x0100,
    uppercase = 0x0200,
    showpos = 0x0400,
    scientific = 0x0800,
    fixed = 0x1000,
    unitbuf = 0x2000,  // flush after every operation
    adjustfield = left | right,
    basefield = dec | oct | hex,
    floatfield = scientific | fixed
  };
  enum open_mode { out = 0x1, app = 0x2, trunc = 0x4 };
  enum seek_dir { beg, cur, end };

  // Format flags; each setter returns the flags it replaced.
  int flags() const { return m_Flags; }
  int flags(int newFlags);
  int setf(int bits);
  int setf(int bits, int mask);
  int unsetf(int bits);

  int width() const { return m_Width; }
  int width(int newWidth);
  int precision() const { return m_Precision; }
  int precision(int newPrecision);

  bool good() const { return !m_Failed; }
  bool fail() const { return m_Failed; }
  void clear() { m_Failed = false; }

 protected:
  constexpr aio_ios() = default;

  int m_Flags = 0;
  int m_Width = 0;
  int m_Precision = 6;
  bool m_Failed = false;
};

class VRKLNU_EXPORT aio_ostream : public aio_ios {
 public:
  aio_ostream(const aio_ostream&) = delete;
  aio_ostream& operator=(const aio_ostream&) = delete;
  virtual ~aio_ostream();

  // Formatted output: honours the width, the adjustment and the number flags.
  aio_ostream& print(const char* text);
  aio_ostream& print_text(const char* text, int length);
  aio_ostream& print_int(int value);
  aio_ostream& print_long(long long value);
  aio_ostream& print_unsigned(unsigned long long value);
  aio_ostream& print_double(double value);
  aio_ostream& print_pointer(const void* value);

  // Raw output.
  aio_ostream& put(char c);
  aio_ostream& write(const char* data, int length);

  // Hands buffered output on to its destination.
  aio_ostream& flush();
  // Moves the write position; a stream that cannot seek fails.
  aio_ostream& seekp(long long offset, seek_dir direction);

 protected:
  // A stream over a buffer that the concrete stream owns.
  constexpr aio_ostream(char* buffer, size_t size)
      : m_Begin(buffer), m_Next(buffer), m_End(buffer + size) {}

  // Called when `size` bytes of `data` don't fit in the buffer: must take the buffered bytes
  // and `data` (draining or growing the buffer) and return whether it could.
  virtual bool Overflow(const char* data, size_t size) = 0;
  // Hands on the buffered bytes; the default has nowhere to send them and succeeds.
  virtual bool Sync();
  // Moves the write position; the default can't.
  virtual bool Seek(long long offset, seek_dir direction);

  char* m_Begin;
  char* m_Next;
  char* m_End;

 private:
  void Put(const char* data, size_t size);
  void Pad(int count);
  aio_ostream& Done();
};

// Sets the field width of the next item; returns the stream, so that it can stand in a
// chain of <<.
VRKLNU_EXPORT aio_ostream& aio_setwidth(aio_ostream& os, int width);

VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, const char* text);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, char c);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, int value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, unsigned int value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, long value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, unsigned long value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, long long value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, unsigned long long value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, double value);
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, const void* pointer);
inline aio_ostream& operator<<(aio_ostream& os, aio_ostream& (*manipulator)(aio_ostream&)) {
  return manipulator(os);
}

// Manipulators: a newline then a flush, and a flush.
VRKLNU_EXPORT aio_ostream& aio_endl(aio_ostream& os);
VRKLNU_EXPORT aio_ostream& aio_flush(aio_ostream& os);

#endif  // AIO_OSTREAM_H
