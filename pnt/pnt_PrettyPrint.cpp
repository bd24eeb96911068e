#include "pnt_PrettyPrint.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "pnt_NumberText.h"

// A held character with the indent level at its time, or a conditional break with the
// nesting level at its time.
struct pnt_PrettyPrint::Item {
  char character;
  bool conditional;
  unsigned level;
};

// A break chance: the item count at the break, the nesting level, and whether it is a
// conditional break (else an optional one).
struct pnt_PrettyPrint::Break {
  unsigned position;
  unsigned level;
  bool conditional;
};

namespace {

const char kEscape = '\033';

template <class T>
T* NewArray(unsigned n) {
  return static_cast<T*>(mem_OperatorNewThrow(sizeof(T) * n));
}

// Whether item count `a` lies beyond `b`; the counts may wrap around.
bool Beyond(unsigned a, unsigned b) {
  return a != b && a - b < 0x80000000u;
}

// A real in `withWidth`, whose stars take the width and the precision, unless the width is
// 0, then in `plain`; repaired.
pnt_NumberText RealText(double value, int width, int precision, const char* withWidth,
                        const char* plain) {
  pnt_NumberText text = width != 0 ? pnt_NumberText(withWidth, pnt_NumberText::Field(width),
                                                    pnt_NumberText::Field(precision), value)
                                   : pnt_NumberText(plain, value);
  text.FixReal(width);
  return text;
}

}  // namespace

pnt_PrettyPrint::pnt_PrettyPrint(aio_ostream& os, unsigned width, unsigned indentStep)
    : m_Stream(&os),
      m_Width(width),
      m_IndentStep(indentStep),
      m_Items(NewArray<Item>(kItemCapacity)),
      m_ItemRing{kItemCapacity},
      m_Breaks(nullptr),
      m_BreakRing{std::max(width, 1u)} {
  try {
    m_Breaks = NewArray<Break>(m_BreakRing.capacity);
  } catch (...) {
    mem_Free(m_Items);
    throw;
  }
}

pnt_PrettyPrint::~pnt_PrettyPrint() {
  mem_Free(m_Breaks);
  mem_Free(m_Items);
}

pnt_PrettyPrint& pnt_PrettyPrint::prettyprint(const char* text, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    if (text[i] == kEscape && i + 1 < n) {
      // An ESC with a byte that is no control letter: both are plain, even a newline.
      if (!Control(text[++i])) {
        Character(kEscape);
        Character(text[i]);
      }
    } else if (text[i] == '\n') {
      ForcedBreak();
    } else {
      Character(text[i]);
    }
  }
  Drain();
  return *this;
}

bool pnt_PrettyPrint::Control(char letter) {
  switch (letter) {
    case 't':
      ++m_Indent;
      return true;
    case 'u':
      if (m_Indent > 0) --m_Indent;
      return true;
    case '{':
      ++m_Level;
      return true;
    case '}':
      if (m_Level > 0) --m_Level;
      m_LineLevel = std::min(m_LineLevel, m_Level);
      return true;
    case 'n':
      ForcedBreak();
      return true;
    case 'c':
      ConditionalBreak();
      return true;
    case 'o':
      OptionalBreak();
      return true;
    default:
      return false;
  }
}

void pnt_PrettyPrint::Character(char c) {
  BreakLongLine();
  Queue(Item{c, false, m_Indent});
  ++m_QueuedChars;
}

void pnt_PrettyPrint::ForcedBreak() {
  m_BreakRing.count = 0;
  m_LineLevel = m_Level;
  WriteHeld(m_ItemRing.count);
  NewLine();
}

void pnt_PrettyPrint::ConditionalBreak() {
  if (m_LineLevel == m_Level) return ForcedBreak();
  DropBreaks(false);
  Queue(Item{kEscape, true, m_Level});
  RecordBreak(true);
}

void pnt_PrettyPrint::OptionalBreak() {
  DropBreaks(true);
  RecordBreak(false);
}

// Before a character is queued: when the held characters and the indentation reach the
// width, the line breaks at the oldest break chance beyond what was written, or, with none,
// everything held goes out and the line simply continues on the next one.
void pnt_PrettyPrint::BreakLongLine() {
  if (m_IndentStep * m_Indent - m_LineChars + m_QueuedChars < m_Width) return;
  while (m_BreakRing.count > 0) {
    const Break chance = m_Breaks[m_BreakRing.first];
    m_BreakRing.PopFront();
    m_LineLevel = chance.level;
    if (Beyond(chance.position, m_Emitted)) {
      WriteHeld(chance.position - m_Emitted);
      if (!chance.conditional) NewLine();  // a conditional break's own item ended the line
      m_LineLevel = std::min(m_LineLevel, m_Level);
      return;
    }
  }
  WriteHeld(m_ItemRing.count);
  Emit('\n');  // a continuation: the next line is not indented
}

void pnt_PrettyPrint::DropBreaks(bool optionalAtLevel) {
  while (m_BreakRing.count > 0) {
    const Break& newest = m_Breaks[m_BreakRing.Newest()];
    const bool drop = newest.level > m_Level ||
                      (optionalAtLevel && newest.level == m_Level && !newest.conditional);
    if (!drop) return;
    --m_BreakRing.count;
  }
}

void pnt_PrettyPrint::RecordBreak(bool conditional) {
  if (m_BreakRing.Full()) m_BreakRing.PopFront();  // the oldest chance is forgotten
  m_Breaks[m_BreakRing.PushBack()] = Break{m_Queued, m_Level, conditional};
}

void pnt_PrettyPrint::Queue(const Item& item) {
  if (m_ItemRing.Full()) WriteHeld(1);  // early, rather than overrun the ring
  m_Items[m_ItemRing.PushBack()] = item;
  ++m_Queued;
}

void pnt_PrettyPrint::WriteHeld(unsigned count) {
  for (; count > 0; --count) {
    const Item item = m_Items[m_ItemRing.first];
    m_ItemRing.PopFront();
    ++m_Emitted;
    if (item.conditional) {
      if (item.level <= m_LineLevel) NewLine();
      continue;
    }
    if (m_AtLineStart) {
      for (unsigned blanks = m_IndentStep * item.level; blanks > 0; --blanks)
        Emit(' ');
      m_AtLineStart = false;
    }
    Emit(item.character);
    ++m_LineChars;
  }
}

void pnt_PrettyPrint::NewLine() {
  Emit('\n');
  m_AtLineStart = true;
}

void pnt_PrettyPrint::Emit(char c) {
  if (m_OutUsed == static_cast<int>(sizeof m_Out)) Drain();
  m_Out[m_OutUsed++] = c;
}

void pnt_PrettyPrint::Drain() {
  if (m_OutUsed == 0) return;
  m_Stream->write(m_Out, m_OutUsed);
  m_OutUsed = 0;
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(const char* text) {
  return prettyprint(text, text ? std::strlen(text) : 0);
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(char c) {
  return prettyprint(&c, 1);
}

// The "u" of "%du" is printed as it stands: "7u".
pnt_PrettyPrint& pnt_PrettyPrint::Print(unsigned char value, int width) {
  return PrintNumber(pnt_NumberText::Integer(value, width, "%*du", "%du"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(short value, int width) {
  return PrintNumber(pnt_NumberText::Integer(value, width, "%*hi", "%hi"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(unsigned short value, int width) {
  return PrintNumber(pnt_NumberText::Integer(value, width, "%*hu", "%hu"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(int value, int width) {
  return PrintNumber(pnt_NumberText::Integer(value, width, "%*i", "%i"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(unsigned value, int width) {
  return PrintNumber(pnt_NumberText::Integer(value, width, "%*u", "%u"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(float value, int width, int precision) {
  return PrintNumber(RealText(value, width, precision, "%*.*g", "%g"));
}

pnt_PrettyPrint& pnt_PrettyPrint::Print(double value, int width, int precision) {
  return PrintNumber(RealText(value, width, precision, "%*.*lg", "%lg"));
}

// All 64 bits of the address; the width is the least number of digits.
pnt_PrettyPrint& pnt_PrettyPrint::Print(const void* value, int width) {
  const unsigned long address = reinterpret_cast<uintptr_t>(value);
  return PrintNumber(pnt_NumberText::Integer(address, width, "0x%.*lx", "0x%lx"));
}

pnt_PrettyPrint& pnt_PrettyPrint::PrintNumber(const pnt_NumberText& text) {
  return prettyprint(text.c_str(), text.Length());
}

pnt_PrettyPrint& pnt_PrettyPrint::PrintTag(const char* open, unsigned n, const char* close) {
  return *this << pnt_indent << pnt_open << open << n << close << " " << pnt_optionalBreak
               << pnt_close << pnt_undent;
}

pnt_PrettyPrint& pnt_PrettyPrint::PrintPtr(unsigned n) {
  return PrintTag("<PointerAt ", n, ">");
}

pnt_PrettyPrint& pnt_PrettyPrint::PrintMarker(unsigned n) {
  return PrintTag("<Marker ", n, ">=");
}

pnt_PrettyPrint& pnt_PrettyPrint::Flush() {
  WriteHeld(m_ItemRing.count);
  Emit('\n');
  Drain();
  m_Stream->flush();
  return *this;
}

pnt_PrettyPrint& pnt_PrettyPrint::StartDebug(const char* file, int line) {
  return *this << file << "." << line << ": " << pnt_forcedBreak << pnt_indent << pnt_open;
}

pnt_PrettyPrint& pnt_PrettyPrint::EndDebug() {
  return (*this << pnt_forcedBreak << pnt_close << pnt_undent).Flush();
}

pnt_PrettyPrint& endl(pnt_PrettyPrint& pp) {
  return pp.Flush();
}

template <class T>
pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint& pp, const char* separator, const T* data,
                               unsigned n) {
  pp << pnt_indent << pnt_open << "[";
  for (unsigned i = 0; i < n; ++i) {
    if (i > 0) pp << separator << " " << pnt_optionalBreak;
    pp << data[i];
  }
  return pp << "]" << pnt_close << pnt_undent;
}

template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*, const int*,
                                                      unsigned);
template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*,
                                                      const unsigned*, unsigned);
template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*, const float*,
                                                      unsigned);
template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*, const double*,
                                                      unsigned);
