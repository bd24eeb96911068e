// Splits a command line into words and redirection symbols, as a shell reads it but with no
// expansion of any kind (the grammar is documented with uti_Spawn::Parser).
#ifndef UTI_SHELLWORDS_H
#define UTI_SHELLWORDS_H

#include "VRKBasSharedContainers.h"
#include "cow_String.h"

class uti_Redirection;

struct uti_ShellToken {
  bool isSymbol;
  cow_String text;  // the word with its quoting removed, or the symbol
  int position;     // of its first character, counted from 1
  // For a word that begins with an unquoted NAME and "=": the length of NAME, otherwise 0.
  int nameLength;
};

// The tokens of the text, or nex_TextException that names the position of what doesn't fit.
cow_List<uti_ShellToken> uti_ShellWords(const cow_String& text);

// Applies the symbol at tokens[index] with the word after it as its target; returns the
// index after the target. Throws when no word follows.
int uti_RedirectToken(uti_Redirection& redirection, const cow_List<uti_ShellToken>& tokens,
                      int index);

// Throws nex_TextException: "<what> at position <position> of the command line".
[[noreturn]] void uti_ShellError(const char* what, int position);

#endif  // UTI_SHELLWORDS_H
