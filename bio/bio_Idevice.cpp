#include "bio_Idevice.h"

bio_Idevice::~bio_Idevice() = default;

void bio_Idevice::donePulling() {}

void bio_Idevice::TakeNextBuffer() {
  if (current != nullptr) doneWith();
  current = nextBuffer();
}

bio_ImemoryDevice::~bio_ImemoryDevice() = default;

void bio_ImemoryDevice::doneWith() {}

bio_Buffer* bio_ImemoryDevice::nextBuffer() {
  return current;
}
