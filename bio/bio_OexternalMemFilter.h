// Writes the fixed external form into memory: the same bytes on every host, so that they can
// be carried between machines and read back with bio_IexternalMemFilter.
//
//   bio_OexternalMemFilter writer(0);
//   writer << 7 << short(-1);
//   writer.putArray(values, n);
//   unsigned size;
//   const char* bytes = writer.GetBuffer(size);  // good until the next write
//
// The form: every multi-byte value is little-endian. bool is one byte, 1 for any non-zero
// value; char and unsigned char one byte; short and unsigned short four bytes, sign- or
// zero-extended to int; int, unsigned and float four bytes; double eight. A string is its
// four-byte length from strlen and its bytes, with no terminator. An array is its elements
// with no count, each in the form of its scalar, so that shorts take four bytes each.
//
// The output grows in chunks of whole MiB, so that writing never reallocates. GetBuffer joins
// them into one block when there is more than one, and writing goes on after it. The total is
// held to 4 GiB less one byte (the size GetBuffer can report); past that a write raises
// omi_FatalError. Allocation failure raises through the memory layer.
#ifndef BIO_OEXTERNALMEMFILTER_H
#define BIO_OEXTERNALMEMFILTER_H

#include <cstddef>
#include <cstdint>

#include "VRKBasExport.h"
#include "bio_Ofilter.h"

class VRKLNU_EXPORT bio_OexternalMemFilter : public bio_OfilterOf<bio_OexternalMemFilter> {
 public:
  // The first chunk holds `initialSize` bytes rounded up to a whole MiB, 1 MiB for 0, with
  // 16 bytes of it taken by the chunk's header.
  explicit bio_OexternalMemFilter(unsigned initialSize);
  ~bio_OexternalMemFilter() override;

  // All the bytes written so far, in order, as one block, and their count in `size`. The
  // block stays good until the next write or the destructor; writing may go on after it.
  const char* GetBuffer(unsigned& size);

 protected:
  // Raw bytes; shortMove is the same as longMove.
  void longMove(const char* src, unsigned n) override;
  void shortMove(const char* src, unsigned n) override;
  // Writes one element of `n` bytes (2, 4 or 8; any other count writes one byte) in the
  // external byte order.
  void shortSwap(const char* src, unsigned n) override;

  // A chunk is one allocation: this header, then its data.
  struct Chunk {
    Chunk* next;    // the older chunk
    uint32_t used;  // bytes of data, set when a newer chunk takes over
    uint32_t padding;
  };

  Chunk* chunk;  // the newest
  char* chunkEnd;
  char* cursor;
  uint32_t finishedBytes;  // bytes in all older chunks

 private:
  template <class, class>
  friend class bio_OfilterOf;
  // Shorts are widened and bools made 0 or 1 element by element; the rest is one move.
  void PutValue(const void* value, bio_Element element);
  void PutValues(const void* values, unsigned n, bio_Element element);
  void Put(const void* src, size_t count, unsigned sizeLog2);
  void PutOverChunks(const char* src, size_t count, unsigned sizeLog2);
  void Enter(void* block, size_t whole, Chunk* next, size_t before);
  size_t NewestBytes() const;

  bool m_Swap;  // the host is taken as big-endian
};

#endif  // BIO_OEXTERNALMEMFILTER_H
