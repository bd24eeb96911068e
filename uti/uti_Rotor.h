// A rotor-machine cipher over bytes, keyed by a text. It exists to read and write data that
// existing files and programs hold in this form, for compatibility, not for protecting
// secrets: a rotor machine falls to well-known attacks.
//
//   uti_Rotorobj machine("the key");
//   cow_String secret = machine.Encrypt("some text");
//   machine.Reset();                              // back to the key's start positions
//   cow_String text = machine.Decrypt(secret);    // "some text"
//
// The machine, exactly (all arithmetic on bytes is modulo 256):
//
// 1. Key stream. Take the MD5 digest of the key's bytes; its first 8 bytes, least significant
//    first, are the 64-bit state s. Each draw does s = s + 0x9E3779B97F4A7C15 and returns
//    z ^ (z >> 31), where z = s; z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
//    z = (z ^ (z >> 27)) * 0x94D049BB133111EB, all modulo 2^64.
// 2. Rotors 0 to n-1, each built in turn from the stream: its wiring w starts as the identity
//    (w[i] = i); for j from 255 down to 1, swap w[j] and w[draw % (j + 1)]. Then its start
//    position p is draw % 256.
// 3. Encrypting a byte c: for i from 0 to n-1, c = w_i[c + p_i] - p_i. Decrypting: for i from
//    n-1 down to 0, c = v_i[c + p_i] - p_i, where v_i is the inverse of w_i.
// 4. After each byte, in either direction, the rotors step like an odometer: p_0 = p_0 + 1,
//    and while rotor i has just come round to position 0 and has a successor, p_(i+1) moves
//    on by one too.
//
// A machine's positions carry on from call to call, so a message cut into pieces gives the
// same bytes as a message in one piece; to decrypt, start from the same positions as the
// encryption did (Reset, or a new machine with the same key and rotor count).
#ifndef UTI_ROTOR_H
#define UTI_ROTOR_H

#include <cstddef>

#include "VRKBasExport.h"
#include "cow_String.h"
#include "mem_Alloc.h"

// One wheel of the machine: a wiring, a permutation of the 256 byte values, turned to a
// position. A plain value; one thread at a time.
class VRKLNU_EXPORT uti_Rotor : public mem_AllocationOperators {
 public:
  // The identity wiring at position 0.
  uti_Rotor();
  // Throws nex_TextException, and keeps the identity, when `wiring` is not a permutation.
  uti_Rotor(const unsigned char wiring[256], int position);

  // A byte through the wiring at the current position, and back.
  unsigned char Forward(unsigned char c) const { return Through(m_Wiring, c); }
  unsigned char Backward(unsigned char c) const { return Through(m_Inverse, c); }
  // Turns the wheel on by one; true when it has come round to position 0.
  bool Step() { return ++m_Position == 0; }

  int Position() const { return m_Position; }
  // Turns the wheel to `position` modulo 256.
  void SetPosition(int position) { m_Position = static_cast<unsigned char>(position); }

 private:
  unsigned char Through(const unsigned char* table, unsigned char c) const {
    return static_cast<unsigned char>(table[static_cast<unsigned char>(c + m_Position)] -
                                      m_Position);
  }

  unsigned char m_Wiring[256];
  unsigned char m_Inverse[256];
  unsigned char m_Position = 0;
};

// The machine: 1 to kMaxRotors rotors wired from a key, as described above. A plain value
// (a copy carries on by itself); one thread at a time. A rotor count out of range throws
// nex_TextException.
class VRKLNU_EXPORT uti_Rotorobj : public mem_AllocationOperators {
 public:
  static constexpr int kDefaultRotors = 6;
  static constexpr int kMaxRotors = 16;

  explicit uti_Rotorobj(const cow_String& key, int rotors = kDefaultRotors);
  uti_Rotorobj(const void* key, size_t size, int rotors = kDefaultRotors);

  // `size` bytes at `data`, in place, the rotors stepping after each.
  void Encrypt(void* data, size_t size);
  void Decrypt(void* data, size_t size);
  // The same on a copy of `text`, which may hold any bytes.
  cow_String Encrypt(const cow_String& text);
  cow_String Decrypt(const cow_String& text);
  // Turns every rotor back to its start position.
  void Reset();

  int RotorCount() const { return m_Count; }
  const uti_Rotor& Rotor(int index) const { return m_Rotors[index]; }

 private:
  void Step();
  template <class Code>
  cow_String OnCopy(const cow_String& text, Code code);

  int m_Count;
  uti_Rotor m_Rotors[kMaxRotors];
  unsigned char m_Start[kMaxRotors];
};

#endif  // UTI_ROTOR_H
