// Base64 with the library's own alphabet: the standard one but for its last character, '!'
// in place of '/', and '=' as padding. Files written with it must be read with the same
// alphabet.
//
//   cow_String data = ...;
//   cow_String text = utl_base64Encode(data, true);   // lines of 76 characters
//   cow_String back = utl_base64Decode(text, true);   // raises on any stray character
//
// Decoding keeps the codec's exact rules, which callers rely on: leading and trailing
// newlines are removed from the caller's text; in lenient mode a byte outside the alphabet is
// skipped but still counts for the place of the bytes after it, so that text with interior
// line breaks or other stray bytes decodes to wrong bytes without an error (intended: pass
// unbroken text); decoding ends at the padding or at a NUL.
//
// Failures raise utl_Base64CodecError. Safe from any thread on distinct strings.
#ifndef UTL_BASE64_H
#define UTL_BASE64_H

#include "VRKBasExport.h"
#include "cow_String.h"
#include "nex_TextException.h"

class utl_Base64CodecError;
extern template class VRKLNU_EXPORT
    nex_ConcreteException<utl_Base64CodecError, 0x1F0002, nex_TextException>;

// The codec's failure; its text is the message. It raises and copies as its own class and is
// stored as a nex_TextException, whose type id it reports.
class VRKLNU_EXPORT utl_Base64CodecError
    : public nex_ConcreteException<utl_Base64CodecError, 0x1F0002, nex_TextException> {
 public:
  using nex_ConcreteException::nex_ConcreteException;
  ~utl_Base64CodecError() override;
};

// 4 characters for every 3 bytes, the last group padded with "=" or "==". With `lineBreaks`
// a newline ends every line of 76 characters (57 bytes) and the last, shorter line. An empty
// text gives an empty result. A result too large to hold raises "memory allocation failure".
VRKLNU_EXPORT cow_String utl_base64Encode(cow_String& text, bool lineBreaks);

// The bytes of the text, after newlines are trimmed from both of its ends in place. Raises
// "strict checking failure" for a byte outside the alphabet in `strict` mode, "padding error"
// for text that ends inside a group or is padded in the wrong place, and "malloc failure"
// when there is no room for the result.
VRKLNU_EXPORT cow_String utl_base64Decode(cow_String& text, bool strict);

#endif  // UTL_BASE64_H
