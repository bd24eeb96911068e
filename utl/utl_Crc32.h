// The checksum of the multisection file: CRC-32 with polynomial 0x04C11DB7, most significant
// bit first (not reflected), initial value 0xFFFFFFFF and no final exclusive-or.
//
//   uint32_t crc = utl_Crc32::Update(utl_Crc32::kInitial, header, headerSize);
//   crc = utl_Crc32::Update(crc, body, bodySize);     // the same as over both at once
//
// Update chooses at run time between a carry-less multiplication path, on processors that
// have the instruction and AVX, and a portable table path; both give the same value. Pure
// functions, safe from any thread.
#ifndef UTL_CRC32_H
#define UTL_CRC32_H

#include <cstddef>
#include <cstdint>

#include "VRKBasExport.h"

class VRKLNU_EXPORT utl_Crc32 {
 public:
  static constexpr uint32_t kInitial = 0xFFFFFFFF;

  // The register `crc` carried on over `size` bytes at `data`.
  static uint32_t Update(uint32_t crc, const void* data, size_t size);
  // The same by tables alone (sixteen bytes a step), on every processor.
  static uint32_t UpdatePortable(uint32_t crc, const void* data, size_t size);
  // Whether Update uses carry-less multiplication on this processor.
  static bool HasCarrylessMultiply();
};

#endif  // UTL_CRC32_H
