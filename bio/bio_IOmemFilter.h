// A filter that is writer and reader at once, on a block of memory of its own that grows as
// it is written: the fast way to hold a serialized value in memory and read it back.
//
//   bio_IOmemFilter memory(4096);   // grows in steps of 4096 bytes
//   memory << 42 << 2.5;
//   int i;
//   double d;
//   memory >> i >> d;               // the reader has its own cursor
//
// Values are in the host's form, as with the internal filters. A write that doesn't fit grows
// the block to its capacity plus the write, rounded up to a multiple of the quantum, copying
// what it holds; a large quantum saves copies. The reader depends on reading only what was
// written: there is no check against the write cursor beyond an assertion in debug builds. A
// quantum of 0 raises omi_FatalError at construction; allocation failure raises through the
// memory layer. A filter belongs to one thread.
//
// Both bases have an object table; name the one meant (memory.bio_Ofilter::objectTable).
#ifndef BIO_IOMEMFILTER_H
#define BIO_IOMEMFILTER_H

#include <cstddef>

#include "VRKBasExport.h"
#include "bio_Ifilter.h"
#include "bio_Ofilter.h"

class VRKLNU_EXPORT bio_IOmemFilter : public bio_OfilterOf<bio_IOmemFilter>,
                                      public bio_IfilterOf<bio_IOmemFilter> {
 public:
  // A block of `quantum` bytes, with both cursors at its start.
  explicit bio_IOmemFilter(size_t quantum);
  ~bio_IOmemFilter() override;

 protected:
  // Strings and arrays: the writing movers append, the reading ones copy from the read cursor
  // and move it on. The shortSwap pair moves the bytes in reverse order.
  void longMove(const char* src, unsigned n) override;
  void shortMove(const char* src, unsigned n) override;
  void shortSwap(const char* src, unsigned n) override;
  void longMove(char* dst, unsigned n) override;
  void shortMove(char* dst, unsigned n) override;
  void shortSwap(char* dst, unsigned n) override;

  char* base;
  char* limit;
  char* writeCursor;
  char* readCursor;
  size_t quantum;

 private:
  char* Append(unsigned n);
  const char* Take(unsigned n);
  void Grow(unsigned n);
  template <class, class>
  friend class bio_OfilterOf;
  template <class, class>
  friend class bio_IfilterOf;
  // Scalars go straight to memory: each put appends the value's bytes, each get loads the
  // value at the read cursor and moves it on. Arrays take the host form, through the movers.
  void PutValue(const void* value, bio_Element element);
  void GetValue(void* value, bio_Element element);
};

#endif  // BIO_IOMEMFILTER_H
