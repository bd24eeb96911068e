#include "cls_SimpleArrayPrim.h"

#include <algorithm>

#include "cls_CollectionType.h"
#include "cls_MementoWrite.h"
#include "cls_ReadVisitor.h"
#include "cls_WriteVisitor.h"
#include "internal/cls_AgentOwner.h"
#include "internal/cls_Report.h"

template <class T>
cls_SimpleArrayPrim<T>::cls_SimpleArrayPrim(int extentQuantum) : m_ExtentQuantum(extentQuantum) {}

template <class T>
cls_SimpleArrayPrim<T>::cls_SimpleArrayPrim(const cls_Uid& uid, int extentQuantum)
    : m_ExtentQuantum(extentQuantum), m_Uid(uid) {}

template <class T>
cls_SimpleArrayPrim<T>::cls_SimpleArrayPrim(const cls_ReadVisitor& visitor, cls_Uid* uidHome)
    : m_Agent(cls_StoredAgent<T>(visitor)),
      m_ExtentQuantum(0),
      m_Uid(visitor.GetUid()),
      m_UidHome(uidHome) {
  if (m_Agent == nullptr) return;
  m_ExtentQuantum = m_Agent->ExtentQuantum();
  cls_JoinAgent(m_Agent, *this);
}

template <class T>
cls_SimpleArrayPrim<T>::cls_SimpleArrayPrim(const cls_Uid& uid, const cls_SimpleArrayPrim& other)
    : cls_PC(),
      m_Agent(other.m_Agent),
      m_Position(other.m_Position),
      m_ExtentQuantum(other.m_ExtentQuantum),
      m_Uid(uid) {
  if (m_Agent != nullptr) cls_JoinAgent(m_Agent, *this);
}

template <class T>
cls_SimpleArrayPrim<T>::cls_SimpleArrayPrim(const cls_SimpleArrayPrim& other)
    : cls_SimpleArrayPrim(other.m_Uid, other) {}

template <class T>
cls_SimpleArrayPrim<T>::~cls_SimpleArrayPrim() {
  if (m_Agent != nullptr) cls_LeaveAgent(m_Agent, *this);
  Unlink();
  if (m_UidHome != nullptr) *m_UidHome = m_Uid;
}

template <class T>
void cls_SimpleArrayPrim<T>::Flush() const {
  if (m_Agent != nullptr && !m_Agent->IsReadOnly()) m_Agent->Flush();
}

template <class T>
void cls_SimpleArrayPrim<T>::Detach() {
  if (m_Agent != nullptr && cls_LeaveAgent(m_Agent, *this)) m_Uid.NewUid();
  Unlink();
}

template <class T>
void cls_SimpleArrayPrim<T>::DBWrite(const cls_WriteVisitor& visitor) const {
  if (!visitor.StartWrite(TypeId(), m_Uid)) return;
  visitor.CheckCollectionType(cls_CollectionTypeFix(cls_CollList, static_cast<const T*>(nullptr)));
  if (m_Agent != nullptr) return;
  m_Agent = visitor.Memento()->MakeAgentList(T(), m_ExtentQuantum);
  if (m_Agent == nullptr) return;
  cls_JoinAgent(m_Agent, *this);
  Flush();
}

template <class T>
int cls_SimpleArrayPrim<T>::Size() const {
  return m_Agent ? m_Agent->Size() : 0;
}

template <class T>
void cls_SimpleArrayPrim<T>::Write(const T* values, int count) {
  if (m_Agent == nullptr) {
    cls_Report(
        "cls_SimpleArrayPrim::AppendBlock: Collection must be associated with a database for "
        "this method.");
    return;
  }
  if (count < 1) return;
  m_Agent->Write(m_Position, count, values);
  m_Position += count;
}

template <class T>
int cls_SimpleArrayPrim<T>::Read(T* values, int count) {
  if (m_Agent == nullptr) {
    cls_Report(
        "cls_SimpleArrayPrim::ReadBlock: Collection must be associated with a database for this "
        "method.");
    return 0;
  }
  if (count < 1) return 0;
  const int read = m_Agent->Read(m_Position, count, values);
  m_Position += read;
  return read;
}

template <class T>
void cls_SimpleArrayPrim<T>::Seek(int position) {
  m_Position = std::clamp(position, 0, Size());
}

template class cls_SimpleArrayPrim<int>;
template class cls_SimpleArrayPrim<float>;
