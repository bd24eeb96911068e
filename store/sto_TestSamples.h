// Test helpers of the store: one sample of every persistent class of the library, each with
// its bytes and the bytes it gives when loaded back and written again (equal when nothing was
// lost), a graph of nodes that share each other, and the process's peak memory.
#ifndef STO_TESTSAMPLES_H
#define STO_TESTSAMPLES_H

#include <functional>
#include <memory>
#include <vector>

#include "cls_ReadVisitor.h"
#include "cls_Uid.h"
#include "cls_WriteVisitor.h"
#include "cow_String.h"
#include "nex_Exception.h"

struct VRKStoreSample {
  const char* name;
  std::function<cow_String()> encode;
  std::function<cow_String(const cow_String&)> reencode;
};
const std::vector<VRKStoreSample>& VRKStoreSamples();

// A raised and caught copy of `error`, so that it has a file and a line.
template <class T>
T VRKStoreThrown(const T& error) {
  try {
    T copy(error);
    NEX_THROW(copy);
  } catch (const T& caught) {
    return caught;
  }
}

// A node: three fields and a pointer to another node.
struct VRKStoreNode {
  static unsigned TypeId() { return 0x3E70002; }
  VRKStoreNode(int number) : id(number), weight(number * 0.25), name(cow_String(number)) {}
  explicit VRKStoreNode(const cls_ReadVisitor& visitor);
  void DBWrite(const cls_WriteVisitor& visitor) const;

  int id;
  double weight;
  cow_String name;
  VRKStoreNode* next = nullptr;
  cls_Uid uid;
};

// Nodes in a list of objects; node i points at node i / 2, node 0 at none.
struct VRKStoreGraph {
  static unsigned TypeId() { return 0x3E70003; }
  explicit VRKStoreGraph(int count);
  explicit VRKStoreGraph(const cls_ReadVisitor& visitor);
  void DBWrite(const cls_WriteVisitor& visitor) const;

  std::vector<std::unique_ptr<VRKStoreNode>> nodes;
  cls_Uid uid;
};

// The peak resident memory of the process (VmHWM), in KiB.
long VRKPeakMemoryKiB();

#endif  // STO_TESTSAMPLES_H
