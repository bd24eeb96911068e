#include "internal/uti_ShellWords.h"

#include <cstring>

#include "nex_TextException.h"
#include "uti_Redirection.h"

namespace {

// Longest first, so that each symbol is read whole.
const char* const kSymbols[] = {"2>>", ">>&", "2>", ">>", ">&", ">", "<"};

// Whether `c` is one of the characters of `set`; never for a zero byte.
bool IsOneOf(char c, const char* set) {
  return c != '\0' && std::strchr(set, c) != nullptr;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool IsNameChar(char c, bool first) {
  return c == '_' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         (!first && c >= '0' && c <= '9');
}

// Reads one command line; `at` is the index of the next character.
class Reader {
 public:
  explicit Reader(const cow_String& text) : m_Text(text.c_str()), m_Length(text.Length()) {}

  cow_List<uti_ShellToken> Tokens() {
    cow_List<uti_ShellToken> tokens;
    for (SkipBlanks(); m_At < m_Length; SkipBlanks()) {
      tokens.Append(Symbol() ? m_Token : Word());
    }
    return tokens;
  }

 private:
  char At(int index) const { return index < m_Length ? m_Text[index] : '\0'; }
  bool AtContinuation() const { return At(m_At) == '\\' && At(m_At + 1) == '\n'; }

  void SkipBlanks() {
    while (m_At < m_Length && (IsBlank(m_Text[m_At]) || AtContinuation()))
      m_At += AtContinuation() ? 2 : 1;
  }

  // Reads a symbol into m_Token, if one begins here.
  bool Symbol() {
    for (const char* symbol : kSymbols) {
      const int length = static_cast<int>(std::strlen(symbol));
      if (m_Length - m_At < length || std::memcmp(m_Text + m_At, symbol, length) != 0) continue;
      m_Token = uti_ShellToken{true, symbol, m_At + 1, 0};
      m_At += length;
      if (IsOneOf(At(m_At), "<>&|")) {
        uti_ShellError("unsupported redirection", m_Token.position);
      }
      return true;
    }
    return false;
  }

  uti_ShellToken Word() {
    uti_ShellToken token{false, cow_String(), m_At + 1, 0};
    bool inName = true;  // only unquoted name characters so far
    while (m_At < m_Length) {
      const char c = m_Text[m_At];
      if (IsBlank(c) || c == '<' || c == '>') break;
      if (c == '=' && inName && !token.text.IsEmpty()) token.nameLength = token.text.Length();
      inName = inName && IsNameChar(c, token.text.IsEmpty());
      if (c == '\'') {
        SingleQuoted(token.text);
      } else if (c == '"') {
        DoubleQuoted(token.text);
      } else if (c == '\\') {
        Escaped(token.text);
      } else {
        if (c == '\0' || IsOneOf(c, "|&;()`$")) Refuse(m_At);
        token.text += c;
        ++m_At;
      }
    }
    return token;
  }

  void SingleQuoted(cow_String& text) {
    const int open = m_At++;
    while (m_At < m_Length && m_Text[m_At] != '\'')
      Literal(text);
    if (m_At == m_Length) uti_ShellError("unterminated single quote", open + 1);
    ++m_At;
  }

  void DoubleQuoted(cow_String& text) {
    const int open = m_At++;
    while (m_At < m_Length && m_Text[m_At] != '"') {
      const char c = m_Text[m_At];
      if (c == '\\' && IsOneOf(At(m_At + 1), "\"\\$`\n")) {
        if (At(m_At + 1) != '\n') text += At(m_At + 1);
        m_At += 2;
        continue;
      }
      if (c == '$' || c == '`') Refuse(m_At);
      Literal(text);
    }
    if (m_At == m_Length) uti_ShellError("unterminated double quote", open + 1);
    ++m_At;
  }

  void Escaped(cow_String& text) {
    if (m_At + 1 == m_Length) uti_ShellError("backslash at the end", m_At + 1);
    ++m_At;
    if (m_Text[m_At] == '\n') {
      ++m_At;
    } else {
      Literal(text);
    }
  }

  void Literal(cow_String& text) {
    if (m_Text[m_At] == '\0') Refuse(m_At);
    text += m_Text[m_At++];
  }

  // Characters that a shell would expand or treat as an operator, and zero bytes, which no
  // argument can hold.
  [[noreturn]] void Refuse(int at) const {
    uti_ShellError(m_Text[at] == '\0' ? "zero byte" : "character that needs quoting", at + 1);
  }

  const char* m_Text;
  int m_Length;
  int m_At = 0;
  uti_ShellToken m_Token{};
};

}  // namespace

cow_List<uti_ShellToken> uti_ShellWords(const cow_String& text) {
  return Reader(text).Tokens();
}

int uti_RedirectToken(uti_Redirection& redirection, const cow_List<uti_ShellToken>& tokens,
                      int index) {
  const uti_ShellToken& symbol = tokens[index];
  if (index + 1 == tokens.Count() || tokens[index + 1].isSymbol) {
    uti_ShellError("redirection without a target", symbol.position);
  }
  redirection.Redirect(symbol.text, uti_Redirection::Handle(tokens[index + 1].text));
  return index + 2;
}

void uti_ShellError(const char* what, int position) {
  NEX_THROW(
      nex_TextException(nex_Translate("%s at position %d of the command line", what, position)));
}
