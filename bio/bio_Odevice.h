// Where an internal writer (bio_OinternalFilter) puts its bytes. A device hands out the free
// room of its current bio_Buffer as a span and is told how many bytes were written; when a
// buffer is full it gives it up (doneWith) and asks for the next one (nextBuffer).
// Subclasses over real channels (a socket, say) supply those two; bio_OmemoryDevice writes
// into one fixed buffer.
//
//   bio_Buffer buffer(0);           // 4096 bytes
//   bio_OmemoryDevice out(buffer);
//   bio_OinternalFilter writer(out);
//   writer << 3.5;
//
// A device belongs to one thread at a time. A device that has no room should block or raise:
// the writer asks again as long as it gets empty spans.
#ifndef BIO_ODEVICE_H
#define BIO_ODEVICE_H

#include "VRKBasExport.h"
#include "bio_Buffer.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT bio_Odevice : public mem_AllocationOperators {
 public:
  virtual ~bio_Odevice();
  // The writer has finished pushing. Does nothing here.
  virtual void donePushing();
  // The current buffer is full.
  virtual void doneWith() = 0;
  // The buffer to write next; null for none.
  virtual bio_Buffer* nextBuffer() = 0;

  // Sets `p` to the first free byte and returns how many follow it. When the current buffer
  // is full, it is given up and the next one taken.
  unsigned span(char*& p) {
    if (current == nullptr || current->writePos >= current->size) TakeNextBuffer();
    if (current == nullptr) return 0;
    p = current->data + current->writePos;
    return current->size - current->writePos;
  }
  // Marks `n` bytes of the last span as written.
  void advance(unsigned n) { current->writePos += n; }

 protected:
  explicit bio_Odevice(bio_Buffer* buffer) : current(buffer) {}

  bio_Buffer* current;

 private:
  void TakeNextBuffer();
};

// A device over one buffer that it doesn't own. When the buffer is full, the content still
// unread is moved to its front to make room; with nothing read, there is no room to make,
// and the write raises omi_FatalError "buffer overflow in oMemoryDevice" with the code 0.
class VRKLNU_EXPORT bio_OmemoryDevice : public bio_Odevice {
 public:
  explicit bio_OmemoryDevice(bio_Buffer& buffer) : bio_Odevice(&buffer) {}
  ~bio_OmemoryDevice() override;

  void doneWith() override;
  bio_Buffer* nextBuffer() override;
};

#endif  // BIO_ODEVICE_H
