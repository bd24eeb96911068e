// A write memento that prints instead of storing: an object's DBWrite into a visitor over a
// pdc_PPerrMementoWrite puts the record it would have written on a pnt_PrettyPrint, as
// indented text, one field a line. How a developer sees what an object would write:
//
//   cls_WriteVisitor root(new pdc_PPerrMementoWrite(&registry, error.DynTypeId(), nullptr));
//   error.DBWrite(root);     // on the debug printer:  << CLASS NAME: nex_TextException
//   pnt_debugPrint().Flush();                      //      m_FromFile: solver
//                                                  //      ...
//                                                  //    >>
//
// A record of a class that the registry knows opens with "<< CLASS NAME: " and the class's
// name and closes with ">>"; an unknown class prints its fields alone. A field is "name: value";
// an object field is the name and the object's own record, a null one "name: NULL". Lists
// print between "[" and "]", maps between "{" and "}", one element a line ("key: value" in a
// map); an agent prints a banner ("FLOAT LIST", "INT LIST", "BINARY DATA") and nothing of what
// is written to it. A record of class "bas_UserData" leaves out its string fields.
//
// Collection tags are checked against the class's declaration: a mismatch prints "Error in
// collections types have: ..." on standard error, a class the registry doesn't know "class
// not registered ...", and printing goes on.
//
// The memento makes its nested mementos, cursors and agents with new; the visitors and the
// arrays delete them as for any store. The registry and the printer are not owned and must
// outlive the memento. One thread at a time, as for the printer.
#ifndef PDC_PPERRMEMENTOWRITE_H
#define PDC_PPERRMEMENTOWRITE_H

#include "VRKBasExport.h"
#include "cls_MementoWrite.h"

class cls_ClassRegistrar;
class pnt_PrettyPrint;

// Selects the constructor of a memento that prints no frame.
enum pdc_NoFrameTag { pdc_NoFrame };

class VRKLNU_EXPORT pdc_PPerrMementoWrite : public cls_MementoWrite {
 public:
  // Opens the record of `classId` on `printer`, or on pnt_debugPrint() when it is null. A
  // null registry knows no class.
  pdc_PPerrMementoWrite(const cls_ClassRegistrar* registry, unsigned classId,
                        pnt_PrettyPrint* printer);
  // For a part of a record that needs no frame (a base-class part): prints nothing itself.
  pdc_PPerrMementoWrite(const cls_ClassRegistrar* registry, unsigned classId,
                        pnt_PrettyPrint* printer, pdc_NoFrameTag);
  // Closes the record.
  ~pdc_PPerrMementoWrite() override;

  int FieldIsPresent(const cls_FieldHandle& field) override;
  cls_MementoWrite* MakeWriteObjWithPtr(const cls_FieldHandle& field, unsigned classId,
                                        const cls_Uid& uid, const void* object) override;
  cls_MementoWrite* MakeWriteObj(const cls_FieldHandle& field, unsigned classId, const cls_Uid& uid,
                                 const cow_COW<int, cow_Direct<int>>* cow) override;
  cls_MementoWrite* MakeBaseWriteObj(unsigned classId, const cls_Uid& uid) override;
  void WriteNull(const cls_FieldHandle& field) override;
  void Write(const cls_FieldHandle& field, const cow_String& value) override;
  void Write(const cls_FieldHandle& field, double value) override;
  void Write(const cls_FieldHandle& field, float value) override;
  void Write(const cls_FieldHandle& field, unsigned int value) override;
  void Write(const cls_FieldHandle& field, int value) override;
  void Write(const cls_FieldHandle& field, unsigned short value) override;
  void Write(const cls_FieldHandle& field, short value) override;
  void Write(const cls_FieldHandle& field, unsigned char value) override;
  void Write(const cls_FieldHandle& field, char value) override;
  void Write(const cls_FieldHandle& field, bool value) override;
  void Write(const cls_FieldHandle& field, long value) override;
  cls_WriteListObj* MakeListObj(unsigned count) override;
  cls_WriteMapInt2Obj* MakeMapInt2Obj() override;
  // No table is printed: null.
  cls_WriteIntTableInt* MakeIntTableInt() override;
  cls_WriteMapString2Obj* MakeMapString2Obj() override;
  cls_WriteListPrim<bool>* MakeListPrim(const bool& selector, int width) override;
  cls_WriteListPrim<cow_String>* MakeListPrim(const cow_String& selector, int width) override;
  cls_WriteListPrim<float>* MakeListPrim(const float& selector, int width) override;
  cls_WriteListPrim<double>* MakeListPrim(const double& selector, int width) override;
  cls_WriteListPrim<unsigned>* MakeListPrim(const unsigned& selector, int width) override;
  cls_WriteListPrim<int>* MakeListPrim(const int& selector, int width) override;
  cls_WriteMapInt2Prim<unsigned>* MakeMapInt2Prim(const unsigned& selector) override;
  cls_WriteMapInt2Prim<cow_String>* MakeMapInt2Prim(const cow_String& selector) override;
  cls_WriteMapInt2Prim<int>* MakeMapInt2Prim(const int& selector) override;
  cls_WriteMapInt2Prim<float>* MakeMapInt2Prim(const float& selector) override;
  cls_WriteMapInt2Prim<double>* MakeMapInt2Prim(const double& selector) override;
  cls_WriteMapString2Prim<unsigned>* MakeMapString2Prim(const unsigned& selector) override;
  cls_WriteMapString2Prim<cow_String>* MakeMapString2Prim(const cow_String& selector) override;
  cls_WriteMapString2Prim<int>* MakeMapString2Prim(const int& selector) override;
  cls_WriteMapString2Prim<float>* MakeMapString2Prim(const float& selector) override;
  cls_WriteMapString2Prim<double>* MakeMapString2Prim(const double& selector) override;
  // Only float and int lists have a printing agent; the others are null.
  cls_AgentListPrim<bool>* MakeAgentList(const bool& selector, int extentQuantum) override;
  cls_AgentListPrim<double>* MakeAgentList(const double& selector, int extentQuantum) override;
  cls_AgentListPrim<float>* MakeAgentList(const float& selector, int extentQuantum) override;
  cls_AgentListPrim<int>* MakeAgentList(const int& selector, int extentQuantum) override;
  cls_AgentListPrim<cow_String>* MakeAgentList(const cow_String& selector,
                                               int extentQuantum) override;
  cls_AgentListPrim<unsigned>* MakeAgentList(const unsigned& selector, int extentQuantum) override;
  cls_AgentBlob* MakeAgentBlob() override;
  void CheckCollectionType(cls_CollectionType tag, const cow_String& fieldName) override;

 private:
  template <class T>
  void Field(const cls_FieldHandle& field, const T& value);
  // "name: " and the record of the object in the field.
  cls_MementoWrite* Nested(const cls_FieldHandle& field, unsigned classId);
  template <class Cursor>
  Cursor* List();
  template <class Cursor>
  Cursor* Map();

  unsigned m_ClassId;
  const cls_ClassRegistrar* m_Registry;
  pnt_PrettyPrint* m_Printer;
  bool m_NoFrame;
  bool m_Quiet = false;
};

#endif  // PDC_PPERRMEMENTOWRITE_H
