// Where an internal reader (bio_IinternalFilter) takes its bytes from. A device hands out the
// unread bytes of its current bio_Buffer as a span and is told how many were consumed; when a
// buffer is used up it gives it up (doneWith) and asks for the next one (nextBuffer).
// Subclasses over real channels (a socket, say) supply those two; bio_ImemoryDevice reads one
// fixed buffer.
//
//   bio_ImemoryDevice in(buffer);   // buffer filled by a bio_OmemoryDevice
//   bio_IinternalFilter reader(in);
//   int value;
//   reader >> value;
//
// A device belongs to one thread at a time. A device that has no more bytes yet should
// block: a span of 0 bytes means the other side is gone, and the read raises omi_FatalError.
#ifndef BIO_IDEVICE_H
#define BIO_IDEVICE_H

#include "VRKBasExport.h"
#include "bio_Buffer.h"
#include "mem_Alloc.h"

class VRKLNU_EXPORT bio_Idevice : public mem_AllocationOperators {
 public:
  virtual ~bio_Idevice();
  // The reader has finished pulling. Does nothing here.
  virtual void donePulling();
  // The current buffer has been read to its end.
  virtual void doneWith() = 0;
  // The buffer to read next; null for none.
  virtual bio_Buffer* nextBuffer() = 0;

  // Sets `p` to the first unread byte and returns how many follow it. When the current
  // buffer has none left, it is given up and the next one taken, whose count may be 0.
  unsigned span(char*& p) {
    if (current == nullptr || current->readPos >= current->writePos) TakeNextBuffer();
    if (current == nullptr) return 0;
    p = current->data + current->readPos;
    return current->writePos - current->readPos;
  }
  // Marks `n` bytes of the last span as read.
  void advance(unsigned n) { current->readPos += n; }

 protected:
  explicit bio_Idevice(bio_Buffer* buffer) : current(buffer) {}

  bio_Buffer* current;

 private:
  void TakeNextBuffer();
};

// A device over one buffer that it doesn't own. Its next buffer is always the same one, so
// once the content is read the spans are empty.
class VRKLNU_EXPORT bio_ImemoryDevice : public bio_Idevice {
 public:
  explicit bio_ImemoryDevice(bio_Buffer& buffer) : bio_Idevice(&buffer) {}
  ~bio_ImemoryDevice() override;

  void doneWith() override;
  bio_Buffer* nextBuffer() override;
};

#endif  // BIO_IDEVICE_H
