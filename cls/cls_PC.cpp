#include "cls_PC.h"

#include <cstdio>
#include <cstdlib>

cls_PC::~cls_PC() {
  Unlink();
}

void cls_PC::Flush() const {
  std::fputs("Can't flush non-specialized cls_PC object.\n", stderr);
  std::abort();
}

void cls_PC::Detach() {
  std::fputs("Can't detach non-specialized cls_PC object.\n", stderr);
  std::abort();
}

void cls_PC::Unlink() {
  m_Previous->m_Next = m_Next;
  m_Next->m_Previous = m_Previous;
  Reset();
}

void cls_PC::Link(cls_PC* other) {
  other->Unlink();
  other->m_Next = this;
  other->m_Previous = m_Previous;
  m_Previous->m_Next = other;
  m_Previous = other;
}
