// A text stream with a delayed line breaker in front of an aio_ostream. Callers write text
// mixed with two-byte control sequences that say where a line may break and how deep the text
// is nested; the printer holds the text back until it knows where the line must break, then
// writes it out, each line indented by `indentStep` blanks per indent level.
//
//   pnt_PrettyPrint& pp = pnt_debugPrint();        // on aio_cerr, width 78, step 2
//   pp.StartDebug(__FILE__, __LINE__);             // "file.line: ", then a body one level in
//   pp << "loads: ";
//   pnt_printList(pp, ",", loads, count);          // a long list wraps at its separators
//   pp.EndDebug();                                 // ends the body and flushes
//
// Control sequences, written like text (the constants below):
//   pnt_indent, pnt_undent   one indent level more or less, for text queued after them;
//   pnt_open, pnt_close      one nesting level more or less;
//   pnt_forcedBreak          ends the line here; so does a byte 10 in the text;
//   pnt_conditionalBreak     ends the line here if the line at this nesting level was broken
//                            (or was ended by a forced break);
//   pnt_optionalBreak        a place where the line may break when it gets too long.
// A sequence must stand whole in one write. An ESC followed by any other byte gives two
// ordinary characters (a newline after it is no break), and an ESC that ends a write is an
// ordinary character. An undent or close with nothing to undo is ignored.
//
// When a character would make the line reach `width`, the line breaks at the oldest break
// chance still held (an optional break replaces the earlier optional one at its level), or,
// with none, right there: what is held goes out, and the continuation line starts at the left
// margin, unindented. Held text reaches the stream at a forced break,
// when a line breaks, and at Flush(); the destructor writes nothing, so text never flushed is
// lost.
//
// Bounds: at most 800 items (a character or a conditional break each) and `width` break
// chances are held. A text that would hold more (a width near or above 800, a long run of
// breaks, a very narrow width with many break chances) has its oldest items written out
// early and its oldest break chances forgotten: its lines may then break elsewhere, but no
// character is lost and memory is never overrun.
//
// Numbers: integers and reals are written by printf formats; a real's text is repaired so
// that it reads alike on every system ("1" becomes "1.", "1e+008" becomes "1e+08"). An
// unsigned char is written with a trailing "u" ("7u"); that is intended and stays. Field
// widths and precisions beyond 120 are held to 120.
//
// Nothing is thrown, except by the allocation of a new printer. Threads: a printer, the
// singleton included, is for one thread at a time.
#ifndef PNT_PRETTYPRINT_H
#define PNT_PRETTYPRINT_H

#include <cstddef>

#include "VRKBasExport.h"
#include "aio_ostream.h"
#include "mem_Alloc.h"

// ESC (octal 033) and a letter.
inline constexpr char pnt_indent[] = "\033t";
inline constexpr char pnt_undent[] = "\033u";
inline constexpr char pnt_open[] = "\033{";
inline constexpr char pnt_close[] = "\033}";
inline constexpr char pnt_forcedBreak[] = "\033n";
inline constexpr char pnt_conditionalBreak[] = "\033c";
inline constexpr char pnt_optionalBreak[] = "\033o";

class pnt_NumberText;

class VRKLNU_EXPORT pnt_PrettyPrint : public mem_AllocationOperators {
 public:
  // Lines go to `os`, which the printer doesn't own and which must outlive it. Raises when
  // the held text can't be allocated.
  pnt_PrettyPrint(aio_ostream& os, unsigned width, unsigned indentStep);
  ~pnt_PrettyPrint();
  pnt_PrettyPrint(const pnt_PrettyPrint&) = delete;
  pnt_PrettyPrint& operator=(const pnt_PrettyPrint&) = delete;

  // Text as it stands, control sequences included; null writes nothing.
  pnt_PrettyPrint& Print(const char* text);
  pnt_PrettyPrint& Print(char c);

  // Numbers, right-aligned in `width` characters when it isn't 0 (printf's "%*"). A real's
  // `precision` counts only with a width; without one it is written as "%g" would.
  pnt_PrettyPrint& Print(unsigned char value, int width);
  pnt_PrettyPrint& Print(short value, int width);
  pnt_PrettyPrint& Print(unsigned short value, int width);
  pnt_PrettyPrint& Print(int value, int width);
  pnt_PrettyPrint& Print(unsigned value, int width);
  pnt_PrettyPrint& Print(float value, int width, int precision);
  pnt_PrettyPrint& Print(double value, int width, int precision);
  // "0x" and the address in hex, with at least `width` digits when it isn't 0.
  pnt_PrettyPrint& Print(const void* value, int width);

  // "<PointerAt n> " and "<Marker n>= ", each nested one level, with a break chance after.
  pnt_PrettyPrint& PrintPtr(unsigned n);
  pnt_PrettyPrint& PrintMarker(unsigned n);

  // Writes out all held text, then a newline, and flushes the stream. It ends no line of the
  // printer's own: text written next is not indented unless a break comes first.
  pnt_PrettyPrint& Flush();

  // "file.line: " on a line of its own, then a body one indent and nesting level in, which
  // EndDebug closes and flushes.
  pnt_PrettyPrint& StartDebug(const char* file, int line);
  pnt_PrettyPrint& EndDebug();

  pnt_PrettyPrint& operator<<(const char* text) { return Print(text); }
  pnt_PrettyPrint& operator<<(char c) { return Print(c); }
  // "T" or "F".
  pnt_PrettyPrint& operator<<(bool value) { return Print(value ? 'T' : 'F'); }
  pnt_PrettyPrint& operator<<(unsigned char value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(short value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(unsigned short value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(int value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(unsigned value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(float value) { return Print(value, 0, 0); }
  pnt_PrettyPrint& operator<<(double value) { return Print(value, 0, 0); }
  pnt_PrettyPrint& operator<<(const void* value) { return Print(value, 0); }
  pnt_PrettyPrint& operator<<(pnt_PrettyPrint& (*manipulator)(pnt_PrettyPrint&)) {
    return manipulator(*this);
  }

 private:
  struct Item;
  struct Break;

  // Slots of a ring buffer: the oldest held slot and how many are held.
  struct Ring {
    unsigned capacity;
    unsigned first = 0;
    unsigned count = 0;

    unsigned Slot(unsigned i) const { return (first + i) % capacity; }
    bool Full() const { return count == capacity; }
    unsigned PushBack() { return Slot(count++); }
    void PopFront() {
      first = Slot(1);
      --count;
    }
    unsigned Newest() const { return Slot(count - 1); }
  };

  static const unsigned kItemCapacity = 800;

  // Everything written ends here: text, breaks and control sequences, byte by byte.
  pnt_PrettyPrint& prettyprint(const char* text, size_t n);
  // Carries out the control sequence of `letter`; false when it names none.
  bool Control(char letter);
  void Character(char c);
  void ForcedBreak();
  void ConditionalBreak();
  void OptionalBreak();
  void BreakLongLine();
  // Drops, newest first, the break chances nested deeper than the current level, and with
  // `optionalAtLevel` the optional ones at it.
  void DropBreaks(bool optionalAtLevel);
  void RecordBreak(bool conditional);
  void Queue(const Item& item);
  // Writes out the `count` oldest held items.
  void WriteHeld(unsigned count);
  void NewLine();
  // Output goes through a small buffer, handed to the stream at the end of each write.
  void Emit(char c);
  void Drain();
  pnt_PrettyPrint& PrintNumber(const pnt_NumberText& text);
  pnt_PrettyPrint& PrintTag(const char* open, unsigned n, const char* close);

  aio_ostream* m_Stream;
  unsigned m_Width;
  unsigned m_IndentStep;
  Item* m_Items;
  Ring m_ItemRing;
  Break* m_Breaks;
  Ring m_BreakRing;
  unsigned m_Emitted = 0;      // items taken out of the ring
  unsigned m_LineChars = 0;    // characters written, never reset
  unsigned m_Queued = 0;       // items put in the ring
  unsigned m_QueuedChars = 0;  // characters put in the ring
  unsigned m_Level = 1;
  unsigned m_LineLevel = 0;  // conditional breaks at or below it fire
  unsigned m_Indent = 0;
  bool m_AtLineStart = true;
  int m_OutUsed = 0;
  char m_Out[256];
};

// Calls Flush.
VRKLNU_EXPORT pnt_PrettyPrint& endl(pnt_PrettyPrint& pp);

// The free form of operator<<.
template <class T>
pnt_PrettyPrint& pnt_prettyPrintGlobal(pnt_PrettyPrint& pp, T value) {
  return pp << value;
}

// "[", the values with `separator`, a blank and a break chance between two of them, and "]";
// one indent and nesting level in, so that a long list wraps at its separators with its
// continuation lines one level deeper than the line that opened it. For int, unsigned, float
// and double.
template <class T>
pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint& pp, const char* separator, const T* data,
                               unsigned n);
extern template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*,
                                                             const int*, unsigned);
extern template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*,
                                                             const unsigned*, unsigned);
extern template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*,
                                                             const float*, unsigned);
extern template VRKLNU_EXPORT pnt_PrettyPrint& pnt_printList(pnt_PrettyPrint&, const char*,
                                                             const double*, unsigned);

// The debug printer: on aio_cerr, width 78, indent step 2. Made at first use; the package's
// last stop deletes it, with any text it still holds. Use it while the library is up.
VRKLNU_EXPORT pnt_PrettyPrint& pnt_debugPrint();

#endif  // PNT_PRETTYPRINT_H
