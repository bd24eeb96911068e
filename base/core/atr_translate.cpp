#include "atr_translate.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>

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

  // Writes a text under "%s" with this placeholder's '-' flag, width and precision.
  void AppendPadded(atr_String& out, const atr_String& text) const {
    bool left = false;
    const char* p = options;
    for (; p < options + optionsLength && OneOf(*p, "-+ #0'"); ++p)
      left = left || *p == '-';
    const int width = std::atoi(p);
    const char* dot = static_cast<const char*>(std::memchr(p, '.', options + optionsLength - p));
    const int length = dot ? std::min(text.Length(), std::atoi(dot + 1)) : text.Length();
    if (!left) AppendBlanks(out, width - length);
    out.Append(text.c_str(), length);
    if (left) AppendBlanks(out, width - length);
  }

  static void AppendBlanks(atr_String& out, int count) {
    static const char blanks[] = "                                ";
    for (; count > 0; count -= sizeof blanks - 1) {
      out.Append(blanks, std::min<int>(count, sizeof blanks - 1));
    }
  }

  // The conversion rebuilt without its index and with the given length and conversion.
  const char* Format(char (&format)[40], const char* tail) const {
    std::snprintf(format, sizeof format, "%%%.*s%s", optionsLength, options, tail);
    return format;
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
    if (value && value->m_Kind != None && placeholder.optionsLength <= 24) {
      AppendValue(out, placeholder, *value);
    } else {
      out.Append(percent, static_cast<int>(placeholder.end - percent));
    }
    p = placeholder.end;
  }
  out.Append(p, static_cast<int>(std::strlen(p)));
  return out;
}

void atr_translate::AppendValue(atr_String& out, const Placeholder& placeholder,
                                const Argument& value) const {
  const char conversion = placeholder.conversion;
  char format[40];
  char buffer[96];
  if (value.m_Kind == Text) {
    if (conversion == 's') {
      placeholder.AppendPadded(out, value.m_Text);
    } else {
      out += value.m_Text;
    }
    return;
  }
  int length;
  if (OneOf(conversion, "di")) {
    length = std::snprintf(buffer, sizeof buffer, placeholder.Format(format, "lld"), value.m_Number);
  } else if (OneOf(conversion, "uoxX")) {
    const char tail[] = {'l', 'l', conversion, '\0'};
    // A signed value under an unsigned conversion reads as its 32-bit pattern, as printf would.
    const unsigned long long number = value.m_Kind == Signed
                                          ? static_cast<unsigned int>(value.m_Number)
                                          : static_cast<unsigned long long>(value.m_Number);
    length = std::snprintf(buffer, sizeof buffer, placeholder.Format(format, tail), number);
  } else if (conversion == 'c') {
    length = std::snprintf(buffer, sizeof buffer, placeholder.Format(format, "c"),
                           static_cast<int>(value.m_Number));
  } else {
    length = std::snprintf(buffer, sizeof buffer, value.m_Kind == Signed ? "%lld" : "%llu",
                           value.m_Number);
  }
  out.Append(buffer, length);
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
