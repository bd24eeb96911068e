#include "pdc_PPerrWriteListObj.h"

#include "internal/pdc_ClassName.h"
#include "internal/pdc_Value.h"
#include "pdc_PPerrMementoWrite.h"

cls_MementoWrite* pdc_PPerrObjects::Element(unsigned classId) const {
  return new pdc_PPerrMementoWrite(m_Registry, classId, &Printer());
}

cls_MementoWrite* pdc_PPerrWriteListObj::MakeWriteObj(unsigned classId, const cls_Uid&,
                                                      const cow_COW<int, cow_Direct<int>>*) {
  return m_Objects.Element(classId);
}

cls_MementoWrite* pdc_PPerrWriteListObj::MakeWriteObjWithPtr(unsigned classId, const cls_Uid&,
                                                             const void*) {
  return m_Objects.Element(classId);
}

void pdc_PPerrWriteListObj::WriteNull(unsigned classId) {
  pnt_PrettyPrint& printer = m_Objects.Printer();
  printer << "NULL";
  if (const char* name = pdc_ClassName(m_Objects.Registry(), classId))
    printer << " (" << name << ")";
  printer << pnt_forcedBreak;
}

template <class Base, class K>
cls_MementoWrite* pdc_PPerrWriteMapObj<Base, K>::MakeWriteObj(
    const K* key, unsigned classId, const cls_Uid&, const cow_COW<int, cow_Direct<int>>*) {
  pdc_PrintValue(m_Objects.Printer(), *key);
  m_Objects.Printer() << ": ";
  return m_Objects.Element(classId);
}

template <class Base, class K>
cls_MementoWrite* pdc_PPerrWriteMapObj<Base, K>::MakeWriteObjWithPtr(const K* key, unsigned classId,
                                                                     const cls_Uid& uid,
                                                                     const void*) {
  return MakeWriteObj(key, classId, uid, nullptr);
}

template <class Base, class K>
void pdc_PPerrWriteMapObj<Base, K>::WriteNull(const K* key, unsigned) {
  pdc_PrintValue(m_Objects.Printer(), *key);
  m_Objects.Printer() << ": NULL" << pnt_forcedBreak;
}

template class pdc_PPerrWriteMapObj<cls_WriteMapInt2Obj, int>;
template class pdc_PPerrWriteMapObj<cls_WriteMapString2Obj, cow_String>;
