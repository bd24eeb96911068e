#include "bio_Buffer.h"

namespace {
constexpr unsigned kDefaultSize = 4096;
}

bio_Buffer::bio_Buffer(unsigned size)
    : writePos(0),
      readPos(0),
      size(size == 0 ? kDefaultSize : size),
      data(static_cast<char*>(mem_OperatorNewThrowBuiltin(this->size))),
      allocated(data) {}

bio_Buffer::~bio_Buffer() {
  mem_Free(allocated);
  allocated = nullptr;
}
