#include "bio_Odevice.h"

#include <cstring>

#include "omi_FatalError.h"

bio_Odevice::~bio_Odevice() = default;

void bio_Odevice::donePushing() {}

void bio_Odevice::TakeNextBuffer() {
  if (current != nullptr) doneWith();
  current = nextBuffer();
}

bio_OmemoryDevice::~bio_OmemoryDevice() = default;

void bio_OmemoryDevice::doneWith() {}

bio_Buffer* bio_OmemoryDevice::nextBuffer() {
  static const char kOverflow[] = "buffer overflow in oMemoryDevice";
  if (current == nullptr) throw omi_FatalError(kOverflow, 0);
  bio_Buffer& buffer = *current;
  if (buffer.writePos <= buffer.readPos) {
    buffer.writePos = buffer.readPos = 0;
  } else if (buffer.readPos == 0) {
    throw omi_FatalError(kOverflow, 0);
  } else {
    std::memmove(buffer.data, buffer.data + buffer.readPos, buffer.writePos - buffer.readPos);
    buffer.writePos -= buffer.readPos;
    buffer.readPos = 0;
  }
  return current;
}
