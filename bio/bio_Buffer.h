// A block of bytes that a device hands to an internal filter in spans. The bytes between
// readPos and writePos are the content: a writer fills from writePos up to size, a reader
// takes from readPos up to writePos.
//
//   bio_Buffer buffer(4096);
//   bio_OmemoryDevice out(buffer);
//   bio_OinternalFilter writer(out);
//   writer << 42;  // four bytes at buffer.data, writePos 4
//
// The buffer owns its block, which comes from the memory layer; allocation failure raises
// through it. A buffer belongs to one thread at a time.
#ifndef BIO_BUFFER_H
#define BIO_BUFFER_H

#include "VRKBasExport.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT bio_Buffer : public mem_AllocationOperators {
 public:
  // A block of `size` bytes, 4096 for 0; both positions at 0.
  explicit bio_Buffer(unsigned size);
  ~bio_Buffer();
  bio_Buffer(const bio_Buffer&) = delete;
  bio_Buffer& operator=(const bio_Buffer&) = delete;

  unsigned writePos;
  unsigned readPos;
  unsigned size;
  char* data;
  char* allocated;  // the block owned; freed and nulled by the destructor
};

#endif  // BIO_BUFFER_H
