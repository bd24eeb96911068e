// Small-block pools: many small pieces for a client, from the memory layer, charged to the
// large-block pool underneath (the provider) as one block that only grows.
//
//   mrm_Pool* pool = mrm_PoolFactory::Startup(meshLabel);
//   if (pool != nullptr) {
//     void* piece = pool->Alloc(48);
//     pool->Free(piece);
//     mrm_PoolFactory::Shutdown(pool);   // gives the provider's charge back
//   }
//
// The provider is charged whole blocks of 64 KiB for what is out to the client times the
// overhead factor (at least the overhead minimum): a high-water mark, raised only when it
// crosses a block boundary, so that Alloc touches the block table rarely and Free never.
// Nothing is refused for exceeding the plan. A size below 0, or above kMaxSize (the piece and
// its header must fit a 32-bit int), is refused with null and changes nothing. Otherwise
// Alloc raises through the memory layer when it fails, with the counts already changed.
// Threads: the job's thread only.
#ifndef MRM_POOL_H
#define MRM_POOL_H

#include <cstdint>
#include <cstring>

#include "VRKBasExport.h"
#include "mem_Alloc.h"
#include "mrm_Capacity.h"
#include "mrm_Label.h"
#include "mrm_LargeBlockPool.h"

class VRKLNU_EXPORT mrm_Pool : public mem_AllocationOperators {
 public:
  mrm_Pool(const mrm_Pool&) = delete;
  mrm_Pool& operator=(const mrm_Pool&) = delete;

  // Each piece carries its size in a header of 8 bytes; both fit a 32-bit int.
  static constexpr int kHeader = 8;
  static constexpr int64_t kMaxSize = 0x7fffffff - kHeader;

  // `size` bytes, 8-byte aligned; null for a size outside [0, kMaxSize].
  void* Alloc(int64_t size) {
    if (static_cast<uint64_t>(size) > static_cast<uint64_t>(kMaxSize)) return nullptr;
    ++m_Consumption.numAllocs;
    m_Consumption.outToClient += static_cast<double>(size);
    double need = m_Consumption.outToClient * m_Capacity.overheadFactor;
    if (m_Capacity.overheadMin > need) need = m_Capacity.overheadMin;
    const int rounded = mrm_RoundToBlock(mrm_TruncateToInt(need));
    if (rounded > m_Provider->m_Consumption.pinnedBytes) RaiseCharge(rounded);
    char* block =
        static_cast<char*>(mem_OperatorNewThrowBuiltin(static_cast<size_t>(size) + kHeader));
    const int32_t stored = static_cast<int32_t>(size);
    std::memcpy(block, &stored, sizeof stored);
    return block + kHeader;
  }
  // Takes back a piece from Alloc of this pool; the pointer is not checked. The provider's
  // charge stays until Shutdown.
  void Free(void* piece) {
    char* block = static_cast<char*>(piece) - kHeader;
    int32_t size;
    std::memcpy(&size, block, sizeof size);
    --m_Consumption.numAllocs;
    m_Consumption.outToClient -= size;
    mem_Free(block);
  }

  const mrm_LargeBlockPool& ConstGetProvider() const { return *m_Provider; }
  // The provider's label.
  const mrm_Label& ConstGetLabel() const { return m_Provider->m_Label; }

 private:
  friend class mrm_LargeBlockPool;
  friend class mrm_PoolFactory;
  friend VRKLNU_EXPORT const mrm_SmallBlockCapacity mrm_GetCapacity(const mrm_Pool& pool);
  friend VRKLNU_EXPORT const mrm_SmallBlockConsumption mrm_GetConsumption(const mrm_Pool& pool);

  mrm_Pool(mrm_LargeBlockPool* provider, const mrm_SmallBlockCapacity& capacity)
      : m_Provider(provider), m_Capacity(capacity) {}
  ~mrm_Pool() = default;

  // Charges the provider up to `rounded` bytes.
  void RaiseCharge(int rounded);
  // Starts again at `capacity`, with nothing out and no charge.
  void Restart(const mrm_SmallBlockCapacity& capacity);

  mrm_LargeBlockPool* m_Provider;
  mrm_SmallBlockCapacity m_Capacity;
  mrm_SmallBlockConsumption m_Consumption;
  mrm_MemBlockID m_BlockId = mrm_NoMemBlock;  // the provider's block, 0 until the first charge
};

// The ways to start and stop small-block pools, each on a large-block pool of the same label.
class VRKLNU_EXPORT mrm_PoolFactory {
 public:
  // Starts the pool as the adopted schedule declares it in the open phases (a small-block
  // declaration), at its selected alternative. Null as for mrm_LargeBlockPoolFactory.
  static mrm_Pool* Startup(const mrm_Label& pool);
  // Starts a pool outside the schedule under the open phase `phase`, its provider at the
  // large-block capacity that `capacity` converts to.
  static mrm_Pool* SpotStartup(const mrm_Label& pool, const mrm_Label& phase,
                               const mrm_SmallBlockCapacity& capacity);
  // The pool on the active provider of that label, else null.
  static mrm_Pool* GetPool(const mrm_Label& pool);
  // Gives back the provider's charge and shuts the provider down. Nothing for null.
  static void Shutdown(mrm_Pool* pool);

 private:
  // The pool on a started provider, made or restarted at `capacity`; null for no provider.
  static mrm_Pool* Attach(mrm_LargeBlockPool* provider, const mrm_SmallBlockCapacity& capacity);
};

VRKLNU_EXPORT const mrm_SmallBlockCapacity mrm_GetCapacity(const mrm_Pool& pool);
VRKLNU_EXPORT const mrm_SmallBlockConsumption mrm_GetConsumption(const mrm_Pool& pool);

#endif  // MRM_POOL_H
