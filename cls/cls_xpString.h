// Strings as persistent objects: a plain string (cls_xpString, class "cow_String") and a
// translatable one (cls_xpTrString, class "atr_String"), each with an identity. Each is
// stored as a one-field record, under "STRING" and "TRSTRING", always through the string
// slot of the memento:
//
//   cls_xpString name(cow_String("beam"));
//   name.DBWrite(visitor);     // the visitor must already hold the store's memento
//
// DBWrite does not call StartWrite. The read constructor passes its own still empty value
// as the default, so a store must deliver a value for the field.
#ifndef CLS_XPSTRING_H
#define CLS_XPSTRING_H

#include "VRKBasExport.h"
#include "atr_String.h"
#include "cls_Uid.h"
#include "cow_String.h"
#include "mem_Alloc.h"

class cls_ClassRegistrar;
class cls_FieldHandle;
class cls_ReadVisitor;
class cls_WriteVisitor;

// What tells the two string classes apart.
struct cls_xpStringTraits {
  typedef cow_String Text;
  static constexpr unsigned kClassId = 0x1A0001;
  static constexpr const char* kClassName = "cow_String";
  static constexpr const char* kField = "STRING";
};
struct cls_xpTrStringTraits {
  typedef atr_String Text;
  static constexpr unsigned kClassId = 0x1A0007;
  static constexpr const char* kClassName = "atr_String";
  static constexpr const char* kField = "TRSTRING";
};

template <class Traits>
class cls_xpStringValue : public Traits::Text, public mem_AllocationOperators {
 public:
  typedef typename Traits::Text Text;

  static unsigned TypeId() { return Traits::kClassId; }
  unsigned DynTypeId() const { return Traits::kClassId; }

  cls_xpStringValue() = default;
  explicit cls_xpStringValue(const Text& text) : Text(text) {}
  explicit cls_xpStringValue(const cls_ReadVisitor& visitor);

  void DBWrite(const cls_WriteVisitor& visitor) const;
  const cls_Uid& Uid() const { return m_Uid; }

  // Declares the class, version 800 with no base class.
  static void InitializeMetadata(cls_ClassRegistrar& registrar);

 private:
  cls_Uid m_Uid;
};

extern template class VRKLNU_EXPORT cls_xpStringValue<cls_xpStringTraits>;
extern template class VRKLNU_EXPORT cls_xpStringValue<cls_xpTrStringTraits>;

typedef cls_xpStringValue<cls_xpStringTraits> cls_xpString;
typedef cls_xpStringValue<cls_xpTrStringTraits> cls_xpTrString;

#endif  // CLS_XPSTRING_H
