#include "uti_Rotor.h"

#include <cstdint>
#include <cstring>
#include <utility>

#include "nex_TextException.h"
#include "uti_MD5.h"

namespace {

// The key stream: a 64-bit counter through a fixed mixing function, seeded from the key's
// digest.
class KeyStream {
 public:
  KeyStream(const void* key, size_t size) {
    uti_MD5 md5;
    md5.Update(key, size);
    unsigned char digest[uti_MD5::kDigestSize];
    md5.Digest(digest);
    for (int i = 7; i >= 0; --i)
      m_State = m_State << 8 | digest[i];
  }

  uint64_t Draw() {
    m_State += 0x9E3779B97F4A7C15u;
    uint64_t z = m_State;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
  }

 private:
  uint64_t m_State = 0;
};

}  // namespace

uti_Rotor::uti_Rotor() {
  for (int i = 0; i < 256; ++i)
    m_Wiring[i] = m_Inverse[i] = static_cast<unsigned char>(i);
}

uti_Rotor::uti_Rotor(const unsigned char wiring[256], int position) : uti_Rotor() {
  bool seen[256] = {};
  for (int i = 0; i < 256; ++i) {
    if (seen[wiring[i]]) {
      NEX_THROW(nex_TextException(
          nex_Translate("uti_Rotor: the wiring sends two bytes to %s", int{wiring[i]})));
    }
    seen[wiring[i]] = true;
  }
  for (int i = 0; i < 256; ++i) {
    m_Wiring[i] = wiring[i];
    m_Inverse[wiring[i]] = static_cast<unsigned char>(i);
  }
  SetPosition(position);
}

uti_Rotorobj::uti_Rotorobj(const cow_String& key, int rotors)
    : uti_Rotorobj(key.c_str(), static_cast<size_t>(key.Length()), rotors) {}

uti_Rotorobj::uti_Rotorobj(const void* key, size_t size, int rotors) : m_Count(rotors) {
  if (rotors < 1 || rotors > kMaxRotors) {
    NEX_THROW(nex_TextException(
        nex_Translate("uti_Rotorobj: %s rotors, where 1 to 16 are possible", rotors)));
  }
  KeyStream stream(key, size);
  for (int i = 0; i < m_Count; ++i) {
    unsigned char wiring[256];
    for (int j = 0; j < 256; ++j)
      wiring[j] = static_cast<unsigned char>(j);
    for (int j = 255; j > 0; --j)
      std::swap(wiring[j], wiring[stream.Draw() % static_cast<uint64_t>(j + 1)]);
    m_Start[i] = static_cast<unsigned char>(stream.Draw() % 256);
    m_Rotors[i] = uti_Rotor(wiring, m_Start[i]);
  }
}

void uti_Rotorobj::Step() {
  for (int i = 0; i < m_Count && m_Rotors[i].Step(); ++i) {
  }
}

void uti_Rotorobj::Encrypt(void* data, size_t size) {
  unsigned char* bytes = static_cast<unsigned char*>(data);
  for (size_t k = 0; k < size; ++k) {
    for (int i = 0; i < m_Count; ++i)
      bytes[k] = m_Rotors[i].Forward(bytes[k]);
    Step();
  }
}

void uti_Rotorobj::Decrypt(void* data, size_t size) {
  unsigned char* bytes = static_cast<unsigned char*>(data);
  for (size_t k = 0; k < size; ++k) {
    for (int i = m_Count - 1; i >= 0; --i)
      bytes[k] = m_Rotors[i].Backward(bytes[k]);
    Step();
  }
}

template <class Code>
cow_String uti_Rotorobj::OnCopy(const cow_String& text, Code code) {
  const int length = text.Length();
  char* block = static_cast<char*>(mem_MallocThrow(static_cast<size_t>(length) + 1));
  std::memcpy(block, text.c_str(), static_cast<size_t>(length));
  block[length] = 0;
  code(block, static_cast<size_t>(length));
  return cow_String(block, length, cow_String::Adopt);
}

cow_String uti_Rotorobj::Encrypt(const cow_String& text) {
  return OnCopy(text, [this](char* data, size_t size) { Encrypt(data, size); });
}

cow_String uti_Rotorobj::Decrypt(const cow_String& text) {
  return OnCopy(text, [this](char* data, size_t size) { Decrypt(data, size); });
}

void uti_Rotorobj::Reset() {
  for (int i = 0; i < m_Count; ++i)
    m_Rotors[i].SetPosition(m_Start[i]);
}
