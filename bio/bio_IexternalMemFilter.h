// Reads the fixed external form (see bio_OexternalMemFilter.h) from a buffer in memory, such
// as the block that bio_OexternalMemFilter::GetBuffer gives or bytes that came from another
// machine. The result is the same on every host.
//
//   bio_IexternalMemFilter reader(bytes, size);
//   int count;
//   reader >> count;
//   reader.getArray(values, count);
//
// The buffer stays the caller's and must outlive the filter. Its bytes may come from
// anywhere, cut short or corrupt: a read that would pass the end of the buffer raises
// omi_FatalError, saying what it lacked, and leaves the cursor where it was; a string's
// length is held against the bytes left before its block is made. Strings and pointer reads
// allocate through the memory layer.
#ifndef BIO_IEXTERNALMEMFILTER_H
#define BIO_IEXTERNALMEMFILTER_H

#include <cstddef>

#include "VRKBasExport.h"
#include "bio_Ifilter.h"

class VRKLNU_EXPORT bio_IexternalMemFilter : public bio_IfilterOf<bio_IexternalMemFilter> {
 public:
  bio_IexternalMemFilter(char* buffer, size_t size);
  ~bio_IexternalMemFilter() override;

 protected:
  // Raw bytes at the cursor; shortMove is the same as longMove.
  void longMove(char* dst, unsigned n) override;
  void shortMove(char* dst, unsigned n) override;
  // Reads one element of `n` bytes (2, 4 or 8; any other count reads one byte) in the
  // external byte order without moving the cursor: a peek.
  void shortSwap(char* dst, unsigned n) override;

  char* begin;
  char* end;
  char* cursor;

 private:
  friend class bio_Ifilter;
  template <class, class>
  friend class bio_IfilterOf;
  // Shorts come widened and are read element by element; bools are made 0 or 1; the rest is
  // one move.
  void GetValue(void* value, bio_Element element);
  void GetValues(void* values, unsigned n, bio_Element element);
  // Raises unless `count` elements of 1 << sizeLog2 bytes are left.
  void Require(size_t count, unsigned sizeLog2) const;
  // Raises unless a string of `length` bytes is left.
  void RequireString(int length) const;
  void Get(void* dst, size_t count, unsigned sizeLog2);

  bool m_Swap;  // the host is taken as big-endian
};

#endif  // BIO_IEXTERNALMEMFILTER_H
