// The printing agents, which pdc_PPerrMementoWrite hands out for bulk data: each prints a
// banner when it is made ("FLOAT LIST", "INT LIST", "BINARY DATA") and nothing of what is
// written to it afterwards. A list agent keeps only the size written, reads nothing, and is
// counted like any agent (cls_AgentListPrim.h): its last owner deletes it.
#ifndef PDC_PPERRAGENTLIST_H
#define PDC_PPERRAGENTLIST_H

#include "VRKBasExport.h"
#include "cls_AgentBlob.h"
#include "cls_AgentListPrim.h"

class pnt_PrettyPrint;

// T is float or int.
template <class T>
class pdc_PPerrAgentList : public cls_AgentListPrim<T> {
 public:
  pdc_PPerrAgentList(pnt_PrettyPrint& printer, int extentQuantum);

  // The end of what was written.
  int Size() const override { return m_Size; }
  int ExtentQuantum() const override { return m_ExtentQuantum; }
  int Refresh() override { return 0; }
  void Flush() override {}
  void Write(int index, int count, const T* values) override;
  // Nothing is kept: 0.
  int Read(int index, int count, T* values) override;
  void AddRef() override { ++m_RefCount; }
  void Release() override { --m_RefCount; }
  int RefCount() const override { return m_RefCount; }
  int IsReadOnly() const override { return 0; }
  // The owners are not kept.
  void Link(cls_PC* owner) override;

 private:
  int m_Size = 0;
  int m_ExtentQuantum;
  int m_RefCount = 0;
};

typedef pdc_PPerrAgentList<float> pdc_PPerrAgentListFloat;
typedef pdc_PPerrAgentList<int> pdc_PPerrAgentListInt;

class VRKLNU_EXPORT pdc_PPerrAgentBlob : public cls_AgentBlob {
 public:
  explicit pdc_PPerrAgentBlob(pnt_PrettyPrint& printer);
};

extern template class VRKLNU_EXPORT pdc_PPerrAgentList<float>;
extern template class VRKLNU_EXPORT pdc_PPerrAgentList<int>;

#endif  // PDC_PPERRAGENTLIST_H
