#include "atr_translate.h"

#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "mem_Alloc.h"

namespace {

const char* Identity(const char* format) {
  return format;
}

std::atomic<atr_TranslationCatalogue> catalogue{Identity};

const char* SkipDigits(const char* p) {
  while (std::isdigit(static_cast<unsigned char>(*p)))
    ++p;
  return p;
}

bool OneOf(char c, const char* set) {
  return c != '\0' && std::strchr(set, c) != nullptr;
}

// Room for a format or a formatted text: on the stack while it is small, else a block from
// the memory layer, whatever width and precision a format asks for.
class Scratch {
 public:
  explicit Scratch(size_t size) { Resize(size); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  ~Scratch() { Resize(0); }

  // Room for `size` characters; the old content is dropped.
  void Resize(size_t size) {
    if (m_Data != m_Local) mem_Free(m_Data);
    m_Data = m_Local;
    m_Size = sizeof m_Local;
    if (size <= sizeof m_Local) return;
    m_Data = static_cast<char*>(mem_OperatorNewThrowBuiltin(size));
    m_Size = size;
  }
  char* Data() { return m_Data; }
  size_t Size() const { return m_Size; }

 private:
  char m_Local[128];
  char* m_Data = m_Local;
  size_t m_Size = sizeof m_Local;
};

}  // namespace

// The parts of one printf conversion: "%" [index "$"] flags-width-precision [length] conv.
struct atr_translate::Placeholder {
  int index = 0;                  // 0 when unnumbered
  const char* options = nullptr;  // flags, width and precision
  int optionsLength = 0;
  char conversion = '\0';
  const char* end = nullptr;  // just past the conversion

  // Parses the conversion at `percent`; false when the format ends inside it.
  bool Parse(const char* percent) {
    const char* p = percent + 1;
    const char* digitsEnd = SkipDigits(p);
    if (digitsEnd > p && *digitsEnd == '$' && digitsEnd - p < 6) {
      index = std::atoi(p);
      p = digitsEnd + 1;
    }
    options = p;
    while (OneOf(*p, "-+ #0'"))
      ++p;
    p = SkipDigits(p);
    if (*p == '.') p = SkipDigits(p + 1);
    optionsLength = static_cast<int>(p - options);
    while (OneOf(*p, "hlLqjzt"))
      ++p;
    if (*p == '\0') return false;
    conversion = *p;
    end = p + 1;
    return true;
  }

  // Formats `value` with this placeholder's flags, width and precision and `tail` (length
  // and conversion) and appends the text; false, with nothing appended, when snprintf
  // refuses the conversion.
  template <class Value>
  bool AppendFormatted(atr_String& out, const char* tail, Value value) const {
    Scratch format(optionsLength + std::strlen(tail) + 2);
    std::snprintf(format.Data(), format.Size(), "%%%.*s%s", optionsLength, options, tail);
    Scratch text(0);
    const int length = std::snprintf(text.Data(), text.Size(), format.Data(), value);
    if (length < 0) return false;
    if (static_cast<size_t>(length) >= text.Size()) {
      text.Resize(static_cast<size_t>(length) + 1);
      std::snprintf(text.Data(), text.Size(), format.Data(), value);
    }
    out.Append(text.Data(), length);
    return true;
  }
};

atr_TranslationCatalogue atr_SetTranslationCatalogue(atr_TranslationCatalogue newCatalogue) {
  return catalogue.exchange(newCatalogue ? newCatalogue : Identity);
}

atr_translate::atr_translate(const char* format) {
  const char* text = catalogue.load()(format ? format : "");
  m_Format = text ? text : "";
}

const atr_translate::Argument* atr_translate::At(int index) const {
  return index >= 1 && index <= kMaxArguments ? &m_Arguments[index - 1] : nullptr;
}

void atr_translate::SetText(int index, const atr_StringBase& text) {
  if (At(index) == nullptr) return;
  m_Arguments[index - 1].m_Kind = Text;
  m_Arguments[index - 1].m_Text = atr_String(text);
}

void atr_translate::SetText(int index, const char* text) {
  atr_String copy;
  copy.Append(text, -1);
  SetText(index, copy);
}

void atr_translate::SetNumber(int index, Kind kind, long long number) {
  if (At(index) == nullptr) return;
  m_Arguments[index - 1].m_Kind = kind;
  m_Arguments[index - 1].m_Number = number;
}

atr_String atr_translate::Result() const {
  atr_String out;
  int next = 1;
  const char* p = m_Format;
  while (const char* percent = std::strchr(p, '%')) {
    out.Append(p, static_cast<int>(percent - p));
    if (percent[1] == '%') {
      out.Append("%", 1);
      p = percent + 2;
      continue;
    }
    Placeholder placeholder;
    if (!placeholder.Parse(percent)) {
      p = percent;
      break;
    }
    const Argument* value = At(placeholder.index ? placeholder.index : next++);
    if (value == nullptr || value->m_Kind == None || !AppendValue(out, placeholder, *value))
      out.Append(percent, static_cast<int>(placeholder.end - percent));
    p = placeholder.end;
  }
  out.Append(p, static_cast<int>(std::strlen(p)));
  return out;
}

bool atr_translate::AppendValue(atr_String& out, const Placeholder& placeholder,
                                const Argument& value) const {
  const char conversion = placeholder.conversion;
  if (value.m_Kind == Text) {
    if (conversion == 's') return placeholder.AppendFormatted(out, "s", value.m_Text.c_str());
    out += value.m_Text;
    return true;
  }
  if (OneOf(conversion, "di")) return placeholder.AppendFormatted(out, "lld", value.m_Number);
  if (OneOf(conversion, "uoxX")) {
    const char tail[] = {'l', 'l', conversion, '\0'};
    // A signed value under an unsigned conversion reads as its 32-bit pattern, as printf would.
    const unsigned long long number = value.m_Kind == Signed
                                          ? static_cast<unsigned int>(value.m_Number)
                                          : static_cast<unsigned long long>(value.m_Number);
    return placeholder.AppendFormatted(out, tail, number);
  }
  if (conversion == 'c')
    return placeholder.AppendFormatted(out, "c", static_cast<int>(value.m_Number));
  char digits[24];
  const char* plain = value.m_Kind == Signed ? "%lld" : "%llu";
  out.Append(digits, std::snprintf(digits, sizeof digits, plain, value.m_Number));
  return true;
}

void atr_SubstituteFormat(atr_translate& tr, int index, const atr_StringBase& value) {
  tr.SetText(index, value);
}

void atr_SubstituteFormat(atr_translate& tr, int index, const char* value) {
  tr.SetText(index, value);
}

void atr_SubstituteFormat(atr_translate& tr, int index, int value) {
  tr.SetNumber(index, atr_translate::Signed, value);
}

void atr_SubstituteFormat(atr_translate& tr, int index, unsigned int value) {
  tr.SetNumber(index, atr_translate::Unsigned, value);
}
