// Labels: the fixed-size names of everything the memory resource manager plans and tracks
// (phases of a job, pools of memory). A label is four 32-bit words, copied freely, equal when
// its words are equal, and the key of the manager's omi_Btree maps.
//
//   mrm_StepPhaseLabel step(2);
//   aio_cout << step;                      // "mrm_Step/2", through the manager's print table
//   mrm_Label plain = step;                // kinds add no data: slicing keeps the label
//
// The family is open: a client kind derives from mrm_Label, builds itself with its own type
// key (0 to 30, not checked beyond reading the table safely) and registers a print function
// for that key with mrm_Manager::RegisterLabelPrinter. Kinds in this library:
//   0 mrm_VoidLabel "VOID0", 1 mrm_JobPhaseLabel "mrm_JobPhase",
//   2 mrm_TestLabel "mrm_Test/1/2/3", 3 mrm_StepPhaseLabel "mrm_Step/2".
// Printing and building a kind reach the mrm_Manager singleton, so they belong between the
// package's start and stop. Threads: labels are values; the print table is the job thread's.
#ifndef MRM_LABEL_H
#define MRM_LABEL_H

#include <cstdint>

#include "VRKBasExport.h"
#include "omi_Btree.h"

class aio_ostream;
class mrm_Label;

// Writes a label of one kind.
typedef void (*mrm_LabelPrinter)(aio_ostream& os, const mrm_Label& label);

class VRKLNU_EXPORT mrm_Label {
 public:
  // All four words 0: a label of type key 0, equal to mrm_VoidLabel().
  mrm_Label() = default;

  short ConstGetTypeKey() const { return m_TypeKey; }
  short ConstGetUShortField() const { return m_UShortField; }
  // `i` is 0, 1 or 2. Guard: any other index reads 0 rather than outside the label.
  int ConstGetUField(const int& i) const { return IsField(i) ? m_UField[i] : 0; }

  // A label crosses a flat buffer as exactly four ints, the first holding the type key in its
  // low half and the short field in its high half.
  void ReadFrom(const int* source);
  void WriteTo(int* destination) const;
  // Kept in the interface and empty: no label is parsed from text.
  void GenericRead(const char*) {}
  // The five fields in decimal joined by "/": "7/0/5/0/0".
  void GenericPrint(aio_ostream& os) const;

  bool operator==(const mrm_Label& other) const {
    for (int i = 0; i < 4; ++i) {
      if (Word(i) != other.Word(i)) return false;
    }
    return true;
  }
  bool operator!=(const mrm_Label& other) const { return !(*this == other); }

 protected:
  // A label of kind `key`, all fields 0. The first label built with no printer loaded for
  // its kind is remembered in a program-wide count; after that no more are looked up. The
  // count is only a marker: such a label is not an error.
  explicit mrm_Label(const short& key);

  short& UShortField() { return m_UShortField; }
  // Guard: an index other than 0, 1 or 2 gets a scratch int of the calling thread, so that
  // the write lands nowhere.
  int& UField(const int& i) {
    static thread_local int scratch;
    return IsField(i) ? m_UField[i] : scratch;
  }

 private:
  friend struct omi_BtreeKey<mrm_Label>;

  static bool IsField(int i) { return i >= 0 && i < 3; }

  // The four words as the tree and the buffer see them.
  uint32_t Word(int i) const {
    if (i != 0) return static_cast<uint32_t>(m_UField[i - 1]);
    return static_cast<uint16_t>(m_TypeKey) |
           static_cast<uint32_t>(static_cast<uint16_t>(m_UShortField)) << 16;
  }

  short m_TypeKey = 0;
  short m_UShortField = 0;
  int m_UField[3] = {0, 0, 0};
};

// Through the manager's print table; a kind with no printer prints as
// "[?noLabelPrinterLoaded:" GenericPrint "]".
VRKLNU_EXPORT aio_ostream& operator<<(aio_ostream& os, const mrm_Label& label);

class VRKLNU_EXPORT mrm_VoidLabel : public mrm_Label {
 public:
  mrm_VoidLabel() : mrm_Label(TypeKey()) {}
  static short TypeKey() { return 0; }
  // "VOID" and the first field.
  static void Print(aio_ostream& os, const mrm_Label& label);
  static void RegisterPrinter();
};

// The whole job: the root phase of every schedule.
class VRKLNU_EXPORT mrm_JobPhaseLabel : public mrm_Label {
 public:
  mrm_JobPhaseLabel() : mrm_Label(TypeKey()) {}
  static short TypeKey() { return 1; }
  // "mrm_JobPhase".
  static void Print(aio_ostream& os, const mrm_Label& label);
  static void RegisterPrinter();
};

class VRKLNU_EXPORT mrm_TestLabel : public mrm_Label {
 public:
  mrm_TestLabel(const int& first, const int& second, const int& third);
  static short TypeKey() { return 2; }
  // "mrm_Test/" and the three fields joined by "/".
  static void Print(aio_ostream& os, const mrm_Label& label);
  static void RegisterPrinter();
};

// A step of the job: the only kind allowed directly under the job phase.
class VRKLNU_EXPORT mrm_StepPhaseLabel : public mrm_Label {
 public:
  explicit mrm_StepPhaseLabel(const int& step) : mrm_Label(TypeKey()) { UField(0) = step; }
  static short TypeKey() { return 3; }
  // "mrm_Step/" and the step number.
  static void Print(aio_ostream& os, const mrm_Label& label);
  static void RegisterPrinter();
};

// Labels order by their words from first to last: at the first unequal pair, the wrapped
// 32-bit difference node word minus sought word sends the search right when below 1, else left.
template <>
struct omi_BtreeKey<mrm_Label> {
  static int Compare(const mrm_Label& sought, const mrm_Label& node) {
    for (int i = 0; i < 4; ++i) {
      if (sought.Word(i) != node.Word(i)) return WordOrder(sought.Word(i), node.Word(i));
    }
    return 0;
  }
  static int WordOrder(uint32_t sought, uint32_t node) {
    return static_cast<int32_t>(node - sought) < 1 ? 1 : -1;
  }
};

// A plain integer as a distinct key type: the ID of a memory block in the manager's table.
struct mrm_Int {
  mrm_Int() = default;
  mrm_Int(int id) : value(id) {}
  int value = 0;
};

// One word, ordered as a label's.
template <>
struct omi_BtreeKey<mrm_Int> {
  static int Compare(mrm_Int sought, mrm_Int node) {
    if (sought.value == node.value) return 0;
    return omi_BtreeKey<mrm_Label>::WordOrder(static_cast<uint32_t>(sought.value),
                                              static_cast<uint32_t>(node.value));
  }
};

#endif  // MRM_LABEL_H
