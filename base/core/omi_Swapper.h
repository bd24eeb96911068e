// Byte order of binary data.
#ifndef OMI_SWAPPER_H
#define OMI_SWAPPER_H

#include "VRKBasExport.h"

class VRKLNU_EXPORT omi_Swapper {
 public:
  enum EndianType { LittleEndian = 0, BigEndian = 1 };

  // The byte order of this machine.
  static EndianType HostEndian() {
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? LittleEndian : BigEndian;
  }
};

#endif  // OMI_SWAPPER_H
