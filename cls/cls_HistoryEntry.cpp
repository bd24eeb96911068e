#include "cls_HistoryEntry.h"

cls_HistoryEntry::~cls_HistoryEntry() {
  UnLink();
}

void cls_HistoryEntry::Link(cls_HistoryEntry* head) {
  m_Previous = head;
  m_Next = head->m_Next;
  head->m_Next->m_Previous = this;
  head->m_Next = this;
}

void cls_HistoryEntry::UnLink() {
  m_Previous->m_Next = m_Next;
  m_Next->m_Previous = m_Previous;
  m_Next = this;
  m_Previous = this;
}

void cls_HistoryEntry::DeleteRing(cls_HistoryEntry* head) {
  while (head->m_Next != head)
    delete head->m_Next;
  delete head;
}
