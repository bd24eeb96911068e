#include "utl_CommandLine.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "omi_strtoSizeT.h"
#include "typ_DebugFlags.h"

template class thr_GlobalSingletonBase<utl_CommandLine>;
template class nex_ConcreteException<utl_MissingCmdLineArgException, 0x1F0002, nex_TextException>;
template class nex_ConcreteException<utl_CmdLineArgFormatException, 0x1F0002, nex_TextException>;

namespace {

constexpr int kMaxArguments = 1024;
// A line read from an arguments file holds at most this many characters and its terminator.
constexpr int kLineBuffer = 1024;

// A copy with a representation of its own, which the caller may use on any thread.
cow_String Private(const cow_String& text) {
  return cow_String(text.c_str(), text.Length());
}

// The value of the key, or null: the map's own search, walked once over its nodes, where
// IsMember and ConstGet would walk them twice under the lock.
const cow_String* Lookup(const cow_Map<cow_String, cow_String>& map, const cow_String& key) {
  const cow_MapNode<cow_String, cow_String>* node = map.Root().GetPtr();
  // Keys of another length are passed over without the call that compares the texts.
  for (int depth = 0;
       node != nullptr && (node->m_Key.Length() != key.Length() || node->m_Key != key); ++depth)
    node = (cow_MapKey<cow_String>::Bit(key, depth) ? node->m_One : node->m_Zero).GetPtr();
  return node != nullptr ? &node->m_Value : nullptr;
}

bool IsDigits(const cow_String& value) {
  for (int i = 0; i < value.Length(); ++i) {
    if (value.c_str()[i] < '0' || value.c_str()[i] > '9') return false;
  }
  return true;
}

// atoi, held to the range of int.
int ToInt(const cow_String& text) {
  const long long value = std::strtoll(text.c_str(), nullptr, 10);
  return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}

const cow_String& CheckedDigits(const cow_String& name, const cow_String& value) {
  if (!IsDigits(value)) NEX_THROW(utl_CmdLineArgFormatException(nex_Translate("integer"), name));
  return value;
}

// "key=value" elements joined by commas; every element counts, an empty one too.
cow_Map<cow_String, cow_String> ParseDictionary(const cow_String& text) {
  cow_Map<cow_String, cow_String> dictionary;
  if (text.IsEmpty()) return dictionary;
  for (int start = 0;;) {
    const int comma = text.Find(",", start);
    const cow_String element = text.Substr(start, comma - start);
    const int equals = element.Find("=");
    dictionary.Insert(element.Substr(0, equals), element.Substr(equals + 1, -1));
    if (comma >= text.Length()) return dictionary;
    start = comma + 1;
  }
}

// The name of a Fortran-style argument: `length` characters, blanks at both ends trimmed.
cow_String FortranName(const char* name, int length) {
  cow_String text(name, name == nullptr || length < 0 ? 0 : length);
  text.Trim(" ");
  return text;
}

// Appends the lines of an arguments file by the file's rules (see utl_CommandLineSetup).
// fgets's own bound makes the 1023-character rule.
void ReadArgumentsFile(std::FILE* file, cow_List<cow_String>& arguments) {
  char line[kLineBuffer];
  while (std::fgets(line, sizeof line, file) != nullptr) {
    if (arguments.Count() >= kMaxArguments) {
      std::fprintf(stderr,
                   "ERROR: There are more than %d command line arguments. All arguments beyond\n",
                   kMaxArguments);
      std::fprintf(stderr, "argument %d will be ignored.\n", kMaxArguments);
      continue;
    }
    int length = static_cast<int>(std::strlen(line));
    if (length > 0 && line[length - 1] == '\n') {
      --length;
    } else {
      // Also for a last line without its newline, which is not too long: intended.
      std::fputs("ERROR: Command line argument in command line file is too long - maximum = 1023\n",
                 stderr);
    }
    arguments.Append(cow_String(line, length));
  }
}

}  // namespace

utl_CommandLine::utl_CommandLine() : m_Lock(Guard()) {}

utl_CommandLine::~utl_CommandLine() = default;

bool utl_CommandLine::IsMember(const cow_String& name) const {
  thr_Hold<thr_Mutex> hold(m_Lock);
  return m_Options.IsMember(name);
}

int utl_CommandLine::Size() const {
  thr_Hold<thr_Mutex> hold(m_Lock);
  return m_Arguments.Count();
}

cow_String utl_CommandLine::ConstGet(int index) const {
  thr_Hold<thr_Mutex> hold(m_Lock);
  return Private(m_Arguments.ConstGet(index));
}

cow_String utl_CommandLine::Find(const cow_String& name, bool& found) const {
  thr_Hold<thr_Mutex> hold(m_Lock);
  const cow_String* value = Lookup(m_Options, name);
  found = value != nullptr;
  return found ? Private(*value) : cow_String();
}

// The lock is released before the raise.
cow_String utl_CommandLine::Value(const cow_String& name) const {
  bool found;
  cow_String value = Find(name, found);
  if (!found) NEX_THROW(utl_MissingCmdLineArgException(name));
  return value;
}

cow_String utl_CommandLine::ConstGetValue(const cow_String& name) const {
  return Value(name);
}

cow_String utl_CommandLine::ConstGetValue(const cow_String& name,
                                          const cow_String& fallback) const {
  bool found;
  cow_String value = Find(name, found);
  return found ? value : fallback;
}

int utl_CommandLine::ConstGetValueAsInt(const cow_String& name) const {
  return ToInt(CheckedDigits(name, Value(name)));
}

int utl_CommandLine::ConstGetValueAsInt(const cow_String& name, int fallback) const {
  bool found;
  const cow_String value = Find(name, found);
  return found ? ToInt(CheckedDigits(name, value)) : fallback;
}

size_t utl_CommandLine::ConstGetValueAsSizeT(const cow_String& name) const {
  return omi_strtoSizeT(CheckedDigits(name, Value(name)).c_str());
}

size_t utl_CommandLine::ConstGetValueAsSizeT(const cow_String& name, size_t fallback) const {
  bool found;
  const cow_String value = Find(name, found);
  return found ? omi_strtoSizeT(CheckedDigits(name, value).c_str()) : fallback;
}

cow_Map<cow_String, cow_String> utl_CommandLine::ConstGetValueAsDictionary(
    const cow_String& name) const {
  return ParseDictionary(Value(name));
}

void utl_CommandLine::SetArgs(const cow_List<cow_String>& arguments) {
  {
    thr_Hold<thr_Mutex> hold(m_Lock);
    cow_String pending;
    bool isPending = false;
    for (int i = 0; i < arguments.Count(); ++i) {
      const cow_String argument = Private(arguments.ConstGet(i));
      m_Arguments.Append(argument);
      if (i == 0) continue;
      if (argument.c_str()[0] == '-') {
        if (isPending) m_Options.Insert(pending, cow_String());
        pending = argument.Substr(1, -1);
        isPending = true;
      } else if (isPending) {
        m_Options.Insert(pending, argument);
        isPending = false;
      }
    }
    // An option that ends the line has an empty value.
    if (isPending) m_Options.Insert(pending, cow_String());
  }
  RaiseDebugLevels();
}

void utl_CommandLine::RaiseDebugLevels() const {
  bool found;
  const cow_String levels = Find("error", found);
  if (!found) return;
  const cow_Map<cow_String, cow_String> facilities = ParseDictionary(levels);
  cow_ConstMapIterator<cow_String, cow_String> it(facilities);
  for (it.First(); !it.IsDone(); it.Next()) {
    const int level = it.CurrentValue().IsEmpty() ? 1 : ToInt(it.CurrentValue());
    if (level >= 1) typ_DebugFlags::SetDebugFlags(it.CurrentKey().c_str(), level);
  }
}

void utl_CommandLineSetup(int argc, char** argv) {
  utl_CommandLine& commandLine = utl_CommandLine::Instance();
  cow_List<cow_String> arguments;
  if (argc < 2 || argv[1] == nullptr || std::strcmp(argv[1], "-clargsfile") != 0) {
    for (int i = 0; i < argc; ++i)
      arguments.Append(cow_String(argv[i]));
    commandLine.SetArgs(arguments);
    return;
  }
  const char* path = argc > 2 && argv[2] != nullptr ? argv[2] : "";
  std::FILE* file = std::fopen(path, "re");
  if (file == nullptr) {
    std::fprintf(stderr, "ERROR: Unable to open command line arguments file %s\n", path);
    std::fflush(stderr);
    return;
  }
  arguments.Append(cow_String(argv[0]));
  ReadArgumentsFile(file, arguments);
  std::fclose(file);
  commandLine.SetArgs(arguments);
}

utl_MissingCmdLineArgException::utl_MissingCmdLineArgException(const cow_String& name)
    : nex_ConcreteException(nex_Translate("%s", name)) {}

utl_MissingCmdLineArgException::~utl_MissingCmdLineArgException() = default;

atr_String utl_MissingCmdLineArgException::AsString() const {
  return nex_Translate("Command line argument %s is required.", GetValue());
}

utl_CmdLineArgFormatException::utl_CmdLineArgFormatException(const atr_String& typeName,
                                                             const cow_String& argumentName)
    : nex_ConcreteException(typeName), m_ArgumentName(argumentName) {}

utl_CmdLineArgFormatException::~utl_CmdLineArgFormatException() = default;

atr_String utl_CmdLineArgFormatException::AsString() const {
  return nex_Translate("Command line argument %1$s must have type %2$s", m_ArgumentName,
                       GetValue());
}

void UTL_COMMANDLINEINTEGER(const char* name, int* value, int nameLength) {
  *value = utl_CommandLine::Instance().ConstGetValueAsInt(FortranName(name, nameLength), 0);
}

void UTL_COMMANDLINEISMEMBER(const char* name, int* result, int nameLength) {
  *result = utl_CommandLine::Instance().IsMember(FortranName(name, nameLength)) ? 0 : 1;
}

void UTL_COMMANDLINESTRING(const char* name, char* buffer, int* length, int nameLength,
                           int bufferLength) {
  *length = utl_CommandLineStringC(FortranName(name, nameLength).c_str(), buffer, bufferLength);
}

int utl_CommandLineStringC(const char* name, char* buffer, int size) {
  const utl_CommandLine& commandLine = utl_CommandLine::Instance();
  // Options are never removed, so a present one stays present for the second look.
  if (!commandLine.IsMember(name)) return 0;
  const cow_String value = commandLine.ConstGetValue(name);
  if (value.Length() > size) return 0;
  std::memcpy(buffer, value.c_str(), value.Length());
  std::memset(buffer + value.Length(), ' ', size - value.Length());
  return value.Length();
}

int utl_getArgs(const char* name, char* buffer) {
  const utl_CommandLine& commandLine = utl_CommandLine::Instance();
  if (!commandLine.IsMember(name)) return 0;
  const cow_String value = commandLine.ConstGetValue(name);
  std::memcpy(buffer, value.c_str(), value.Length() + 1);
  return value.Length();
}
