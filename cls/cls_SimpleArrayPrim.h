// A sequential cursor on a stored list of values, with no paging and no blocks: Write and
// Read move a position through the store's agent directly. For bulk transfers, and for an
// object that stores a list in a field and keeps only its identity:
//
//   cls_SimpleArrayPrim<float> coords(m_CoordsUid, 3);   // extent quantum 3
//   coords.DBWrite(cls_WriteVisitor(visitor, cls_FieldHandle(-1, "xyz"), nullptr, nullptr));
//   coords.Write(data, 3 * count);
//
//   cls_SimpleArrayPrim<float> back(cls_ReadVisitor(visitor, field), &m_CoordsUid);
//   back.Read(buffer, back.Size());   // at its end, back hands the stored identity to
//                                     // m_CoordsUid (its uid home)
//
// The first DBWrite attaches the cursor to the agent that the memento gives (made with the
// cursor's extent quantum); the read constructor attaches it to the stored one. Copies share
// the agent and stand in its ring of owners (cls_PC); the last to leave flushes and deletes
// it. Without an agent, Write and Read print a message on standard error and do nothing.
// Store exceptions pass through. Not synchronised. Instantiated for int and float.
#ifndef CLS_SIMPLEARRAYPRIM_H
#define CLS_SIMPLEARRAYPRIM_H

#include "VRKBasExport.h"
#include "cls_AgentListPrim.h"
#include "cls_PC.h"
#include "cls_Uid.h"

class cls_ReadVisitor;
class cls_WriteVisitor;

template <class T>
class cls_SimpleArrayPrim : public cls_PC {
 public:
  static unsigned TypeId() { return 0x230001; }

  // Unattached, with a fresh identity or the one given.
  explicit cls_SimpleArrayPrim(int extentQuantum);
  cls_SimpleArrayPrim(const cls_Uid& uid, int extentQuantum);
  // Attached to the stored list, at position 0, with the agent's extent quantum and the
  // stored identity, which it gives to `uidHome` (if not null) when it ends.
  cls_SimpleArrayPrim(const cls_ReadVisitor& visitor, cls_Uid* uidHome);
  // A copy of `other` (agent, position, quantum) under another identity.
  cls_SimpleArrayPrim(const cls_Uid& uid, const cls_SimpleArrayPrim& other);
  // Shares agent and identity; the copy has no uid home.
  cls_SimpleArrayPrim(const cls_SimpleArrayPrim& other);
  cls_SimpleArrayPrim& operator=(const cls_SimpleArrayPrim&) = delete;
  ~cls_SimpleArrayPrim() override;

  // The agent's Flush; nothing when unattached or read-only.
  void Flush() const override;
  // Leaves the agent (the last owner flushes and deletes it and takes a new identity).
  void Detach() override;
  // The list record (tag 5x for T); the first write attaches the cursor.
  virtual void DBWrite(const cls_WriteVisitor& visitor) const;
  virtual unsigned DynTypeId() const { return TypeId(); }

  // The stored size; 0 when unattached.
  int Size() const;
  // Stores `count` values at the position and moves past them; nothing for a count below 1.
  void Write(const T* values, int count);
  // Reads up to `count` values at the position and moves past them; returns how many.
  int Read(T* values, int count);
  // Moves to `position`, held to 0 and Size().
  void Seek(int position);
  int Position() const { return m_Position; }
  int ExtentQuantum() const { return m_ExtentQuantum; }
  const cls_Uid& Uid() const { return m_Uid; }
  bool IsAttached() const { return m_Agent != nullptr; }

 private:
  mutable cls_AgentListPrim<T>* m_Agent = nullptr;
  int m_Position = 0;
  int m_ExtentQuantum;
  cls_Uid m_Uid;
  cls_Uid* m_UidHome = nullptr;
};

extern template class VRKLNU_EXPORT cls_SimpleArrayPrim<int>;
extern template class VRKLNU_EXPORT cls_SimpleArrayPrim<float>;

#endif  // CLS_SIMPLEARRAYPRIM_H
