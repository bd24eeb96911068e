// The printing cursors of lists and maps of objects, which pdc_PPerrMementoWrite hands out.
// Each element prints as its own record (a new pdc_PPerrMementoWrite, which the element's
// visitor deletes); a list prints between "[" and "]", a map between "{" and "}" with
// "key: " before each record. A null element prints "NULL" in a list, followed by " (" and
// the class's name ")" when the registry knows the class, and "key: NULL" in a map. Made with
// new by the memento, deleted by their user.
#ifndef PDC_PPERRWRITELISTOBJ_H
#define PDC_PPERRWRITELISTOBJ_H

#include "VRKBasExport.h"
#include "cls_WriteCollectionBase.h"
#include "pdc_PPerrWriteListPrim.h"

class cls_ClassRegistrar;

// The elements of a collection of objects between brackets.
class VRKLNU_EXPORT pdc_PPerrObjects {
 public:
  pdc_PPerrObjects(const cls_ClassRegistrar* registry, pnt_PrettyPrint& printer, const char* open,
                   const char* close)
      : m_Registry(registry), m_Block(printer, open, close) {}

  // The record of an element of class `classId`.
  cls_MementoWrite* Element(unsigned classId) const;
  const cls_ClassRegistrar* Registry() const { return m_Registry; }
  pnt_PrettyPrint& Printer() const { return m_Block.Printer(); }

 private:
  const cls_ClassRegistrar* m_Registry;
  pdc_PPerrBlock m_Block;
};

class VRKLNU_EXPORT pdc_PPerrWriteListObj : public cls_WriteListObj {
 public:
  // `count` is the number of elements announced; it is kept and not used.
  pdc_PPerrWriteListObj(const cls_ClassRegistrar* registry, pnt_PrettyPrint& printer,
                        unsigned count)
      : m_Objects(registry, printer, "[", "]"), m_Count(count) {}

  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) override;
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid& uid,
                                        const void* object) override;
  void WriteNull(unsigned classId) override;
  unsigned Count() const { return m_Count; }

 private:
  pdc_PPerrObjects m_Objects;
  unsigned m_Count;
};

// `Base` is the map cursor with keys of type K.
template <class Base, class K>
class pdc_PPerrWriteMapObj : public Base {
 public:
  pdc_PPerrWriteMapObj(const cls_ClassRegistrar* registry, pnt_PrettyPrint& printer)
      : m_Objects(registry, printer, "{", "}") {}

  cls_MementoWrite* MakeWriteObj(const K* key, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) override;
  cls_MementoWrite* MakeWriteObjWithPtr(const K* key, unsigned classId, const cls_Uid& uid,
                                        const void* object) override;
  void WriteNull(const K* key, unsigned classId) override;

 private:
  pdc_PPerrObjects m_Objects;
};

typedef pdc_PPerrWriteMapObj<cls_WriteMapInt2Obj, int> pdc_PPerrWriteMapInt2Obj;
typedef pdc_PPerrWriteMapObj<cls_WriteMapString2Obj, cow_String> pdc_PPerrWriteMapString2Obj;

extern template class VRKLNU_EXPORT pdc_PPerrWriteMapObj<cls_WriteMapInt2Obj, int>;
extern template class VRKLNU_EXPORT pdc_PPerrWriteMapObj<cls_WriteMapString2Obj, cow_String>;

#endif  // PDC_PPERRWRITELISTOBJ_H
