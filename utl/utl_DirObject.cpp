#include "utl_DirObject.h"

#include <dirent.h>

namespace {

using PathList = cow_List<VRKBasUtlFilePath>;

bool Holds(const cow_String& name, const cow_String& text) {
  return name.Find(text.c_str()) < name.Length();
}

cow_String Upper(cow_String text) {
  text.ToUpper();
  return text;
}

// The entries of `from` whose file name passes `test`, appended to `to`.
template <class Test>
void Select(const PathList& from, Test test, PathList& to) {
  for (int i = 0; i < from.Count(); ++i) {
    if (test(from.ConstGet(i).FileName())) to.Append(from.ConstGet(i));
  }
}

}  // namespace

// Lists the directory with opendir and readdir, as the system's directory search would.
utl_DirObject::utl_DirObject(VRKBasUtlFilePath directory) : VRKBasUtlFilePath(directory) {
  const cow_String path = AbsolutePathName();
  DIR* stream = ::opendir(path.c_str());
  if (stream == nullptr) return;
  while (const dirent* entry = ::readdir(stream)) {
    const VRKBasUtlFilePath item(path, cow_String(entry->d_name));
    const bool isDirectory =
        entry->d_type == DT_DIR ||
        ((entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) && item.IsDir());
    (isDirectory ? m_Directories : m_Files).Append(item);
  }
  ::closedir(stream);
}

PathList utl_DirObject::GetAllEntries() const {
  PathList entries = m_Directories;
  entries.Concatenate(m_Files);
  return entries;
}

PathList utl_DirObject::PrefixMatchFilenames(cow_String text, bool ignoreCase) const {
  PathList matches;
  if (ignoreCase) {
    const cow_String upper = Upper(text);
    Select(
        m_Files, [&](const cow_String& name) { return Holds(Upper(name), upper); }, matches);
  } else {
    Select(
        m_Files, [&](const cow_String& name) { return Holds(name, text); }, matches);
  }
  return matches;
}

PathList utl_DirObject::PrefixMatchDirNames(cow_String text) const {
  PathList matches;
  Select(
      m_Directories, [&](const cow_String& name) { return Holds(name, text); }, matches);
  return matches;
}

PathList utl_DirObject::PrefixMatchAllEntries(cow_String text) const {
  PathList matches = PrefixMatchDirNames(text);
  matches.Concatenate(PrefixMatchFilenames(text, false));
  return matches;
}

PathList utl_DirObject::FindFileNamesWithExtension(cow_String extension) const {
  PathList matches;
  Select(
      m_Files,
      [&](const cow_String& name) {
        const int dot = name.rfind(".", name.Length(), 1);
        return (dot < 0 ? cow_String() : name.Substr(dot, -1)) == extension;
      },
      matches);
  return matches;
}
