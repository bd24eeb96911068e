// Feeds random bytes to the store's reader as the bytes of a graph: rebuilt through the class
// registrar (any exception or coordinate class), and read as a few value classes whose read
// constructors pull lists, maps, tables, maps of objects and paging lists. A stored array
// read back is walked to its end. Failures of the store are expected; crashes, overruns,
// hangs, leaks and allocations beyond the input are not.
#include <cstdint>

#include "VRKFuzz.h"
#include "cls_ArrayPrim.h"
#include "cls_xoMap.h"
#include "cls_xp2DArray.h"
#include "cls_xpList.h"
#include "cls_xpMap.h"
#include "nex_Exception.h"
#include "sto_Store.h"
#include "uti_CoordCont3D.h"

namespace {

template <class T>
void Read(const cow_String& bytes) {
  try {
    sto_DecodeValue<T>(bytes);
  } catch (const nex_Exception&) {
  }
}

void ReadArray(const cow_String& bytes) {
  try {
    const cls_ArrayPrim<double> array = sto_DecodeValue<cls_ArrayPrim<double>>(bytes);
    double sum = 0;
    for (int i = 0; i < array.Size(); ++i)
      sum += array.ConstGet(i);
    VRKFuzzCheck(array.BlocksInMemory() <= 1);
    (void)sum;
  } catch (const nex_Exception&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  VRKFuzzStartLibrary();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const cow_String bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
  try {
    sto_Decode(bytes);
  } catch (const nex_Exception&) {
  }
  Read<cls_xpListString>(bytes);
  Read<cls_xp1DArrayListInt>(bytes);
  Read<cls_xp2DArrayDouble>(bytes);
  Read<cls_xpMapString2String>(bytes);
  Read<cls_xpMapInt2Int>(bytes);
  Read<cls_xoMap<cow_String, cls_xp2DArrayDouble>>(bytes);
  Read<cls_xoMap<int, cls_xp1DArrayListInt>>(bytes);
  Read<uti_CoordCont3D>(bytes);
  ReadArray(bytes);
  return 0;
}
