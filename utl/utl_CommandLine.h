// The process's command line, kept once for the whole program: the arguments as given and a
// map of option names (without their leading '-') to values. Any code asks for an option by
// name, directly or through the C and Fortran-style entry points below, without seeing argv.
//
//   int main(int argc, char** argv) {
//     ...start the library...
//     utl_CommandLineSetup(argc, argv);  // "-clargsfile FILE" first: one argument a line
//     int steps = utl_CommandLine::Instance().ConstGetValueAsInt("steps", 10);
//
// An argument that begins with '-' is an option; the argument after it, unless that too
// begins with '-', is its value, else the value is empty: `-n -5` gives options "n" and "5".
// Setting the line has one side effect: the option `error` ("-error solver=3,mesh") raises the
// debug levels of the named facilities (typ_DebugFlags), to 1 where no level is given.
//
// Threads: every public member holds the singleton's lock for its whole length, and the
// strings it returns are copies of their own, so that any thread may ask at any time. The
// library must be up; package utl's stop destroys the object.
#ifndef UTL_COMMANDLINE_H
#define UTL_COMMANDLINE_H

#include <cstddef>

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cow_String.h"
#include "nex_TextException.h"
#include "thr_GlobalSingleton.h"

// Fills the command line from the program's arguments; called once, at the start of a job.
// When there are two arguments or more and argv[1] is "-clargsfile", the arguments are
// instead argv[0] and the lines of the file that argv[2] names, one argument a line, taken
// literally: no quotes, no trimming, blank lines included. At most 1024 arguments (the
// program name counts) and 1023 characters an argument: a longer line is split, with a
// complaint on standard error, and lines past the 1024th are dropped, with a complaint each.
// A NUL byte ends its line's argument; the rest of the line is lost, with the same complaint.
// A file that can't be opened is reported on standard error and leaves the command line
// unset. Nothing is thrown.
VRKLNU_EXPORT void utl_CommandLineSetup(int argc, char** argv);

class utl_CommandLine;
extern template class VRKLNU_EXPORT thr_GlobalSingletonBase<utl_CommandLine>;

class VRKLNU_EXPORT utl_CommandLine : public thr_GlobalSingleton<utl_CommandLine> {
 public:
  bool IsMember(const cow_String& name) const;
  // The number of arguments, the program name included.
  int Size() const;
  // Argument `index`, the program name being 0. An index outside the arguments ends the
  // process, as any bad index into a list of the library does.
  cow_String ConstGet(int index) const;

  // The option's value. Without a fallback, an absent option raises
  // utl_MissingCmdLineArgException.
  cow_String ConstGetValue(const cow_String& name) const;
  cow_String ConstGetValue(const cow_String& name, const cow_String& fallback) const;
  // The value as a number: only the digits 0 to 9 are accepted (no sign, no blank), else
  // utl_CmdLineArgFormatException with the type "integer", also when a fallback is given: the
  // fallback stands only for an absent option. An empty value is 0; a value past the type's
  // range gives its largest value.
  int ConstGetValueAsInt(const cow_String& name) const;
  int ConstGetValueAsInt(const cow_String& name, int fallback) const;
  size_t ConstGetValueAsSizeT(const cow_String& name) const;
  size_t ConstGetValueAsSizeT(const cow_String& name, size_t fallback) const;
  // The value read as "key=value" pairs joined by commas. A pair without '=' is a key with an
  // empty value; an empty value gives an empty map.
  cow_Map<cow_String, cow_String> ConstGetValueAsDictionary(const cow_String& name) const;

 private:
  friend class thr_GlobalSingletonBase<utl_CommandLine>;
  friend void utl_CommandLineSetup(int argc, char** argv);

  utl_CommandLine();
  ~utl_CommandLine();

  // Appends the arguments and enters those after the first (the program name) as options,
  // then raises the debug levels that `error` names. A second call adds to what is there;
  // nothing is cleared.
  void SetArgs(const cow_List<cow_String>& arguments);
  void RaiseDebugLevels() const;
  // A private copy of the option's value, and whether the option is present.
  cow_String Find(const cow_String& name, bool& found) const;
  cow_String Value(const cow_String& name) const;

  cow_Map<cow_String, cow_String> m_Options;
  cow_List<cow_String> m_Arguments;
  thr_Mutex& m_Lock;  // the singleton's guard
};

class utl_MissingCmdLineArgException;
extern template class VRKLNU_EXPORT
    nex_ConcreteException<utl_MissingCmdLineArgException, 0x1F0002, nex_TextException>;
class utl_CmdLineArgFormatException;
extern template class VRKLNU_EXPORT
    nex_ConcreteException<utl_CmdLineArgFormatException, 0x1F0002, nex_TextException>;

// A required option is absent. Its text is the option's name; AsString composes the report.
// Raises and copies as its own class; stored as a nex_TextException, whose type id it reports.
class VRKLNU_EXPORT utl_MissingCmdLineArgException
    : public nex_ConcreteException<utl_MissingCmdLineArgException, 0x1F0002, nex_TextException> {
 public:
  explicit utl_MissingCmdLineArgException(const cow_String& name);
  ~utl_MissingCmdLineArgException() override;
  atr_String AsString() const override;
};

// An option's value isn't of the type asked for. Its text is the type's name ("integer").
class VRKLNU_EXPORT utl_CmdLineArgFormatException
    : public nex_ConcreteException<utl_CmdLineArgFormatException, 0x1F0002, nex_TextException> {
 public:
  utl_CmdLineArgFormatException(const atr_String& typeName, const cow_String& argumentName);
  ~utl_CmdLineArgFormatException() override;
  atr_String AsString() const override;

  const cow_String& ArgumentName() const { return m_ArgumentName; }

 private:
  cow_String m_ArgumentName;
};

// Entry points for C and Fortran. The names in capitals take the option's name as a character
// pointer with its length passed as a hidden int after the listed arguments (for the string
// entry, then the buffer's length); blanks at both ends of the name are trimmed.
extern "C" {

// `*value` is the option's value as an int (see ConstGetValueAsInt), 0 when it is absent.
VRKLNU_EXPORT void UTL_COMMANDLINEINTEGER(const char* name, int* value, int nameLength);
// `*result` is 0 when the option is present and 1 when it is absent: the sense of a status
// code, inverted against the name on purpose, since callers rely on it.
VRKLNU_EXPORT void UTL_COMMANDLINEISMEMBER(const char* name, int* result, int nameLength);
// `*length` is utl_CommandLineStringC of the trimmed name into the blank-padded buffer.
VRKLNU_EXPORT void UTL_COMMANDLINESTRING(const char* name, char* buffer, int* length,
                                         int nameLength, int bufferLength);
// Copies the value into the `size` bytes of `buffer`, with no terminator, blanks after it,
// and returns its length. Returns 0 and leaves the buffer as it was when the option is absent
// or its value is longer than `size`.
VRKLNU_EXPORT int utl_CommandLineStringC(const char* name, char* buffer, int size);
// Copies the value and its terminator into `buffer` and returns its length; 0, with the
// buffer untouched, when the option is absent. There is no bound: the caller sizes the buffer
// for the longest value it can get (utl_CommandLineStringC is the bounded form).
VRKLNU_EXPORT int utl_getArgs(const char* name, char* buffer);
}

#endif  // UTL_COMMANDLINE_H
