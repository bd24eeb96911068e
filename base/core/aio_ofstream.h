// A stream to a file descriptor: a named file that it opens, or a descriptor it is given.
// aio_cerr (unit-buffered: every operation reaches the descriptor at once) and aio_cout
// (buffered, flushed by aio_endl, flush() and at exit) are the two standard ones.
//
//   aio_ofstream log("run.log", aio_ios::out | aio_ios::app);
//   log << "step " << 3 << aio_endl;
//
// A file that can't be opened leaves the stream failed (is_open() false, good() false).
#ifndef AIO_OFSTREAM_H
#define AIO_OFSTREAM_H

#include "VRKBasExport.h"
#include "aio_ostream.h"

class VRKLNU_EXPORT aio_ofstream : public aio_ostream {
 public:
  static const int kBufferSize = 4096;

  // Not open until open() succeeds.
  aio_ofstream();
  // Opens `name` for writing: created if needed, truncated unless `mode` has app.
  explicit aio_ofstream(const char* name, int mode = out);
  // Writes to a descriptor that the caller keeps open and closes itself.
  constexpr explicit aio_ofstream(int descriptor, int flags = 0)
      : aio_ostream(m_Buffer, kBufferSize), m_Descriptor(descriptor) {
    m_Flags = flags;
  }
  ~aio_ofstream() override;

  bool open(const char* name, int mode = out);
  bool is_open() const { return m_Descriptor >= 0; }
  // Flushes and, for a named file, closes it; false when the stream had failed or closing
  // failed. A descriptor given by the caller is only flushed.
  bool close();

 protected:
  bool Overflow(const char* data, size_t size) override;
  bool Sync() override;
  bool Seek(long long offset, seek_dir direction) override;

 private:
  bool WriteAll(const char* data, size_t size);

  int m_Descriptor = -1;
  bool m_Owned = false;
  char m_Buffer[kBufferSize] = {};
};

VRKLNU_EXPORT extern aio_ofstream aio_cerr;
VRKLNU_EXPORT extern aio_ofstream aio_cout;

#endif  // AIO_OFSTREAM_H
