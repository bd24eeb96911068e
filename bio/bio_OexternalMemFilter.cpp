#include "bio_OexternalMemFilter.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "internal/bio_ExternalForm.h"
#include "omi_FatalError.h"

namespace {

constexpr size_t kChunkStep = 0x100000;  // chunks are whole MiB
constexpr size_t kMaxOutput = UINT32_MAX;

size_t RoundUpToChunkStep(size_t size) {
  return (size + kChunkStep - 1) & ~(kChunkStep - 1);
}

}  // namespace

bio_OexternalMemFilter::bio_OexternalMemFilter(unsigned initialSize)
    : bio_OfilterOf(nullptr), m_Swap(bio_externalFormSwaps()) {
  const size_t whole = RoundUpToChunkStep(initialSize == 0 ? 1 : initialSize);
  Enter(mem_OperatorNewThrowBuiltin(whole), whole, nullptr, 0);
}

bio_OexternalMemFilter::~bio_OexternalMemFilter() {
  while (chunk != nullptr) {
    Chunk* next = chunk->next;
    mem_Free(chunk);
    chunk = next;
  }
}

// Makes `block`, of `whole` bytes, the newest chunk, after `next` and the `before` bytes of
// the older chunks. Its end is held to what the output may still take, so that only
// PutOverChunks can pass it. Callers allocate first, so that a failure changes nothing.
void bio_OexternalMemFilter::Enter(void* block, size_t whole, Chunk* next, size_t before) {
  chunk = static_cast<Chunk*>(block);
  *chunk = Chunk{next, 0, 0};
  finishedBytes = static_cast<uint32_t>(before);
  cursor = reinterpret_cast<char*>(chunk + 1);
  chunkEnd = cursor + std::min(whole - sizeof(Chunk), kMaxOutput - before);
}

size_t bio_OexternalMemFilter::NewestBytes() const {
  return static_cast<size_t>(cursor - reinterpret_cast<const char*>(chunk + 1));
}

// The path of every write. Inline, so that it stays out of the exported interface and the
// writes inline it instead of calling it through the PLT.
inline void bio_OexternalMemFilter::Put(const void* src, size_t count, unsigned sizeLog2) {
  if (count > static_cast<size_t>(chunkEnd - cursor) >> sizeLog2)
    return PutOverChunks(static_cast<const char*>(src), count, sizeLog2);
  bio_moveElements(cursor, src, count, sizeLog2, m_Swap);
  cursor += count << sizeLog2;
}

// Fills the newest chunk with the whole elements that fit, leaving the rest of it unused,
// and puts the others in a new chunk made big enough for them.
void bio_OexternalMemFilter::PutOverChunks(const char* src, size_t count, unsigned sizeLog2) {
  const size_t room = static_cast<size_t>(chunkEnd - cursor) >> sizeLog2;
  const size_t rest = (count - room) << sizeLog2;
  if (rest > kMaxOutput - finishedBytes - NewestBytes() - (room << sizeLog2))
    throw omi_FatalError("bio_OexternalMemFilter: output beyond 4 GiB", EFBIG);
  const size_t whole = RoundUpToChunkStep(sizeof(Chunk) + rest);
  void* block = mem_OperatorNewThrowBuiltin(whole);
  Put(src, room, sizeLog2);
  chunk->used = static_cast<uint32_t>(NewestBytes());
  Enter(block, whole, chunk, finishedBytes + chunk->used);
  Put(src + (room << sizeLog2), count - room, sizeLog2);
}

const char* bio_OexternalMemFilter::GetBuffer(unsigned& size) {
  size = static_cast<unsigned>(finishedBytes + NewestBytes());
  if (finishedBytes != 0) {
    const size_t whole = RoundUpToChunkStep(sizeof(Chunk) + size);
    void* block = mem_OperatorNewThrowBuiltin(whole);
    chunk->used = static_cast<uint32_t>(NewestBytes());
    Chunk* older = chunk;
    Enter(block, whole, nullptr, 0);
    cursor += size;
    // The newest chunk's bytes go last; each older chunk's go in front of the one before.
    for (char* at = cursor; older != nullptr;) {
      at -= older->used;
      std::memcpy(at, older + 1, older->used);
      Chunk* next = older->next;
      mem_Free(older);
      older = next;
    }
  }
  return reinterpret_cast<const char*>(chunk + 1);
}

void bio_OexternalMemFilter::PutValue(const void* value, bio_Element element) {
  if (element.sizeLog2 == 1) {
    int16_t narrow;
    std::memcpy(&narrow, value, 2);
    const uint32_t wide =
        element.isSigned ? static_cast<uint32_t>(int32_t{narrow}) : static_cast<uint16_t>(narrow);
    return Put(&wide, 1, 2);
  }
  if (element.isBool) {
    // The byte is read as such, so that any non-zero byte, even one no bool should hold, is 1.
    const unsigned char byte = *static_cast<const unsigned char*>(value) != 0;
    return Put(&byte, 1, 0);
  }
  Put(value, 1, element.sizeLog2);
}

void bio_OexternalMemFilter::PutValues(const void* values, unsigned n, bio_Element element) {
  if (element.sizeLog2 != 1 && !element.isBool) return Put(values, n, element.sizeLog2);
  const char* bytes = static_cast<const char*>(values);
  for (unsigned i = 0; i < n; ++i)
    PutValue(bytes + size_t{i} * element.size, element);
}

void bio_OexternalMemFilter::longMove(const char* src, unsigned n) {
  Put(src, n, 0);
}

void bio_OexternalMemFilter::shortMove(const char* src, unsigned n) {
  longMove(src, n);
}

void bio_OexternalMemFilter::shortSwap(const char* src, unsigned n) {
  Put(src, 1, bio_swapSizeLog2(n));
}
