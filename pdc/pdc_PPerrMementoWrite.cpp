#include "pdc_PPerrMementoWrite.h"

#include <cstdio>

#include "cls_ClassRegistrar.h"
#include "cls_CollectionType.h"
#include "internal/pdc_ClassName.h"
#include "internal/pdc_Value.h"
#include "pdc_PPerrAgentList.h"
#include "pdc_PPerrWriteListObj.h"
#include "pdc_PPerrWriteListPrim.h"
#include "pnt_PrettyPrint.h"

pdc_PPerrMementoWrite::pdc_PPerrMementoWrite(const cls_ClassRegistrar* registry, unsigned classId,
                                             pnt_PrettyPrint* printer)
    : pdc_PPerrMementoWrite(registry, classId, printer, pdc_NoFrame) {
  const char* name = pdc_ClassName(registry, classId);
  if (name == nullptr) return;
  m_NoFrame = false;
  *m_Printer << pnt_forcedBreak << "<< CLASS NAME: " << name << pnt_forcedBreak << pnt_indent;
  // The record of user data leaves out its texts.
  m_Quiet = cow_String(name) == "bas_UserData";
}

pdc_PPerrMementoWrite::pdc_PPerrMementoWrite(const cls_ClassRegistrar* registry, unsigned classId,
                                             pnt_PrettyPrint* printer, pdc_NoFrameTag)
    : m_ClassId(classId),
      m_Registry(registry),
      m_Printer(printer ? printer : &pnt_debugPrint()),
      m_NoFrame(true) {}

pdc_PPerrMementoWrite::~pdc_PPerrMementoWrite() {
  if (!m_NoFrame) *m_Printer << pnt_undent << ">>" << pnt_forcedBreak;
}

int pdc_PPerrMementoWrite::FieldIsPresent(const cls_FieldHandle&) {
  return 1;
}

template <class T>
void pdc_PPerrMementoWrite::Field(const cls_FieldHandle& field, const T& value) {
  *m_Printer << field.Name().c_str() << ": ";
  pdc_PrintValue(*m_Printer, value);
  *m_Printer << pnt_forcedBreak;
}

cls_MementoWrite* pdc_PPerrMementoWrite::Nested(const cls_FieldHandle& field, unsigned classId) {
  *m_Printer << field.Name().c_str() << ": ";
  return new pdc_PPerrMementoWrite(m_Registry, classId, m_Printer);
}

cls_MementoWrite* pdc_PPerrMementoWrite::MakeWriteObjWithPtr(const cls_FieldHandle& field,
                                                             unsigned classId, const cls_Uid&,
                                                             const void*) {
  return Nested(field, classId);
}

cls_MementoWrite* pdc_PPerrMementoWrite::MakeWriteObj(const cls_FieldHandle& field,
                                                      unsigned classId, const cls_Uid&,
                                                      const cow_COW<int, cow_Direct<int>>*) {
  return Nested(field, classId);
}

cls_MementoWrite* pdc_PPerrMementoWrite::MakeBaseWriteObj(unsigned classId, const cls_Uid&) {
  return new pdc_PPerrMementoWrite(m_Registry, classId, m_Printer, pdc_NoFrame);
}

void pdc_PPerrMementoWrite::WriteNull(const cls_FieldHandle& field) {
  *m_Printer << field.Name().c_str() << ": NULL" << pnt_forcedBreak;
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, const cow_String& value) {
  if (!m_Quiet) Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, double value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, float value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, unsigned int value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, int value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, unsigned short value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, short value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, unsigned char value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, char value) {
  Field(field, value);
}

void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, bool value) {
  Field(field, value);
}

// The stored long holds 32 bits: it prints as the int it is.
void pdc_PPerrMementoWrite::Write(const cls_FieldHandle& field, long value) {
  Write(field, static_cast<int>(value));
}

cls_WriteListObj* pdc_PPerrMementoWrite::MakeListObj(unsigned count) {
  return new pdc_PPerrWriteListObj(m_Registry, *m_Printer, count);
}

cls_WriteMapInt2Obj* pdc_PPerrMementoWrite::MakeMapInt2Obj() {
  return new pdc_PPerrWriteMapInt2Obj(m_Registry, *m_Printer);
}

cls_WriteIntTableInt* pdc_PPerrMementoWrite::MakeIntTableInt() {
  return nullptr;
}

cls_WriteMapString2Obj* pdc_PPerrMementoWrite::MakeMapString2Obj() {
  return new pdc_PPerrWriteMapString2Obj(m_Registry, *m_Printer);
}

template <class Cursor>
Cursor* pdc_PPerrMementoWrite::List() {
  return new Cursor(*m_Printer);
}

cls_WriteListPrim<bool>* pdc_PPerrMementoWrite::MakeListPrim(const bool&, int) {
  return List<pdc_PPerrWriteListPrim<bool>>();
}

cls_WriteListPrim<cow_String>* pdc_PPerrMementoWrite::MakeListPrim(const cow_String&, int) {
  return List<pdc_PPerrWriteListPrim<cow_String>>();
}

cls_WriteListPrim<float>* pdc_PPerrMementoWrite::MakeListPrim(const float&, int) {
  return List<pdc_PPerrWriteListPrim<float>>();
}

cls_WriteListPrim<double>* pdc_PPerrMementoWrite::MakeListPrim(const double&, int) {
  return List<pdc_PPerrWriteListPrim<double>>();
}

cls_WriteListPrim<unsigned>* pdc_PPerrMementoWrite::MakeListPrim(const unsigned&, int) {
  return List<pdc_PPerrWriteListPrim<unsigned>>();
}

cls_WriteListPrim<int>* pdc_PPerrMementoWrite::MakeListPrim(const int&, int) {
  return List<pdc_PPerrWriteListPrim<int>>();
}

cls_WriteMapInt2Prim<unsigned>* pdc_PPerrMementoWrite::MakeMapInt2Prim(const unsigned&) {
  return List<pdc_PPerrWriteMapInt2Prim<unsigned>>();
}

cls_WriteMapInt2Prim<cow_String>* pdc_PPerrMementoWrite::MakeMapInt2Prim(const cow_String&) {
  return List<pdc_PPerrWriteMapInt2Prim<cow_String>>();
}

cls_WriteMapInt2Prim<int>* pdc_PPerrMementoWrite::MakeMapInt2Prim(const int&) {
  return List<pdc_PPerrWriteMapInt2Prim<int>>();
}

cls_WriteMapInt2Prim<float>* pdc_PPerrMementoWrite::MakeMapInt2Prim(const float&) {
  return List<pdc_PPerrWriteMapInt2Prim<float>>();
}

cls_WriteMapInt2Prim<double>* pdc_PPerrMementoWrite::MakeMapInt2Prim(const double&) {
  return List<pdc_PPerrWriteMapInt2Prim<double>>();
}

cls_WriteMapString2Prim<unsigned>* pdc_PPerrMementoWrite::MakeMapString2Prim(const unsigned&) {
  return List<pdc_PPerrWriteMapString2Prim<unsigned>>();
}

cls_WriteMapString2Prim<cow_String>* pdc_PPerrMementoWrite::MakeMapString2Prim(const cow_String&) {
  return List<pdc_PPerrWriteMapString2Prim<cow_String>>();
}

cls_WriteMapString2Prim<int>* pdc_PPerrMementoWrite::MakeMapString2Prim(const int&) {
  return List<pdc_PPerrWriteMapString2Prim<int>>();
}

cls_WriteMapString2Prim<float>* pdc_PPerrMementoWrite::MakeMapString2Prim(const float&) {
  return List<pdc_PPerrWriteMapString2Prim<float>>();
}

cls_WriteMapString2Prim<double>* pdc_PPerrMementoWrite::MakeMapString2Prim(const double&) {
  return List<pdc_PPerrWriteMapString2Prim<double>>();
}

cls_AgentListPrim<bool>* pdc_PPerrMementoWrite::MakeAgentList(const bool&, int) {
  return nullptr;
}

cls_AgentListPrim<double>* pdc_PPerrMementoWrite::MakeAgentList(const double&, int) {
  return nullptr;
}

cls_AgentListPrim<float>* pdc_PPerrMementoWrite::MakeAgentList(const float&, int extentQuantum) {
  return new pdc_PPerrAgentListFloat(*m_Printer, extentQuantum);
}

cls_AgentListPrim<int>* pdc_PPerrMementoWrite::MakeAgentList(const int&, int extentQuantum) {
  return new pdc_PPerrAgentListInt(*m_Printer, extentQuantum);
}

cls_AgentListPrim<cow_String>* pdc_PPerrMementoWrite::MakeAgentList(const cow_String&, int) {
  return nullptr;
}

cls_AgentListPrim<unsigned>* pdc_PPerrMementoWrite::MakeAgentList(const unsigned&, int) {
  return nullptr;
}

cls_AgentBlob* pdc_PPerrMementoWrite::MakeAgentBlob() {
  return new pdc_PPerrAgentBlob(*m_Printer);
}

void pdc_PPerrMementoWrite::CheckCollectionType(cls_CollectionType tag,
                                                const cow_String& fieldName) {
  cls_CheckCollectionType(m_Registry, m_ClassId, tag, fieldName);
}
