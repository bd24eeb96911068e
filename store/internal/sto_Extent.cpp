#include "sto_Extent.h"

#include <new>
#include <type_traits>

#include "cow_List.h"

template <class T>
sto_Extent<T>::~sto_Extent() {
  for (int i = 0; i < m_Size; ++i)
    m_Values[i].~T();
  mem_Free(m_Values);
}

template <class T>
void sto_Extent<T>::Encode(sto_Output& out) const {
  out.PutU32(static_cast<uint32_t>(m_Size));
  out.PutArray(m_Values, m_Size);
}

template <class T>
void sto_Extent<T>::Decode(const sto_Input& in, size_t position, int count) {
  // The bytes are checked before anything is allocated for them.
  in.Require(position, static_cast<size_t>(count) * sto_SizeOfKind(Kind()), "list elements");
  Reserve(count);
  if constexpr (std::is_trivially_default_constructible<T>::value) {
    m_Size = count;  // the bytes are copied over the elements
  } else {
    for (; m_Size < count; ++m_Size)
      new (m_Values + m_Size) T();
  }
  in.GetArray(position, count, m_Values, "list element");
}

template <class T>
void sto_Extent<T>::Write(int index, int count, const T* values) {
  if (index < 0 || count < 1) return;
  const int end = index + count;
  if (end > m_Capacity) Reserve(end > 2 * m_Capacity ? end : 2 * m_Capacity);
  for (; m_Size < end; ++m_Size)
    new (m_Values + m_Size) T();
  for (int i = 0; i < count; ++i)
    m_Values[index + i] = values[i];
}

template <class T>
int sto_Extent<T>::Read(int index, int count, T* values) const {
  if (index < 0 || index >= m_Size || count < 1) return 0;
  if (count > m_Size - index) count = m_Size - index;
  for (int i = 0; i < count; ++i)
    values[i] = m_Values[index + i];
  return count;
}

template <class T>
void sto_Extent<T>::Reserve(int size) {
  if (size <= m_Capacity) return;
  T* values = static_cast<T*>(mem_OperatorNewThrow(sizeof(T) * static_cast<size_t>(size)));
  for (int i = 0; i < m_Size; ++i) {
    new (values + i) T(m_Values[i]);
    m_Values[i].~T();
  }
  mem_Free(m_Values);
  m_Values = values;
  m_Capacity = size;
}

template class sto_Extent<bool>;
template class sto_Extent<int>;
template class sto_Extent<unsigned>;
template class sto_Extent<float>;
template class sto_Extent<double>;
template class sto_Extent<cow_String>;

namespace {

// The live agents of this thread by identity; few at a time, so a short list serves.
struct AgentRegistry {
  struct Entry {
    const void* identity;
    sto_AgentEntry* agent;
  };
  cow_List<Entry> entries;
};
thread_local AgentRegistry t_Agents;

}  // namespace

void sto_RegisterAgent(const cls_Uid& uid, sto_AgentEntry* agent) {
  t_Agents.entries.Append({uid.Identity(), agent});
}

void sto_UnregisterAgent(sto_AgentEntry* agent) {
  cow_List<AgentRegistry::Entry>& entries = t_Agents.entries;
  for (int i = entries.Count() - 1; i >= 0; --i)
    if (entries.ConstGet(i).agent == agent) {
      entries.Get(i) = entries.ConstGet(entries.Count() - 1);
      entries.Resize(entries.Count() - 1);
      return;
    }
}

sto_AgentEntry* sto_FindAgent(const cls_Uid& uid) {
  const cow_List<AgentRegistry::Entry>& entries = t_Agents.entries;
  for (int i = entries.Count() - 1; i >= 0; --i)
    if (entries.ConstGet(i).identity == uid.Identity()) return entries.ConstGet(i).agent;
  return nullptr;
}
