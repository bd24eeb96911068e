#include "internal/RedirectorMap.h"

namespace {

// The thread singleton registry destroys the table at this level.
constexpr thr_ThreadObjectDestructLevel kDestructLevel = 16;

}  // namespace

RedirectorMap::RedirectorMap() : thr_ThreadSingleton<RedirectorMap>(kDestructLevel) {
  m_Symbols.Insert("<", Entry{0, false, false});
  m_Symbols.Insert(">", Entry{1, false, false});
  m_Symbols.Insert("2>", Entry{2, false, false});
  m_Symbols.Insert(">>", Entry{1, true, false});
  m_Symbols.Insert("2>>", Entry{2, true, false});
  m_Symbols.Insert(">&", Entry{1, false, true});
  m_Symbols.Insert(">>&", Entry{1, true, true});
}

RedirectorMap::~RedirectorMap() = default;

const RedirectorMap::Entry* RedirectorMap::Find(const cow_String& symbol) const {
  return m_Symbols.IsMember(symbol) ? &m_Symbols.ConstGet(symbol) : nullptr;
}
