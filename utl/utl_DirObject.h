// The entries of one directory, read once when the object is made, split into files and
// directories, each as a path of the directory's absolute path and the entry's name:
//
//   utl_DirObject dir(VRKBasUtlFilePath(cow_String("results"), cow_String()));
//   cow_List<VRKBasUtlFilePath> logs = dir.FindFileNamesWithExtension(".log");
//
// The "." and ".." entries are kept, among the directories. A link counts as what it points
// to. Entries come in the order the system lists them. A directory that can't be read gives
// empty lists and no error. Threads: one thread at a time.
#ifndef UTL_DIROBJECT_H
#define UTL_DIROBJECT_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "VRKBasUtlFilePath.h"
#include "cow_String.h"

class VRKLNU_EXPORT utl_DirObject : public VRKBasUtlFilePath {
 public:
  // Reads the directory at once.
  explicit utl_DirObject(VRKBasUtlFilePath directory);

  cow_List<VRKBasUtlFilePath> GetAllFileNames() const { return m_Files; }
  cow_List<VRKBasUtlFilePath> GetAllDirNames() const { return m_Directories; }
  // The directories, then the files.
  cow_List<VRKBasUtlFilePath> GetAllEntries() const;

  // The files whose name holds `text` anywhere, not only at its start, in spite of the name
  // (intended); with `ignoreCase`, compared in upper case.
  cow_List<VRKBasUtlFilePath> PrefixMatchFilenames(cow_String text, bool ignoreCase) const;
  // The same, case-sensitive, for the directories, and for the directories then the files.
  cow_List<VRKBasUtlFilePath> PrefixMatchDirNames(cow_String text) const;
  cow_List<VRKBasUtlFilePath> PrefixMatchAllEntries(cow_String text) const;
  // The files whose name, from its last '.' on, equals `extension` (".log"); a name without
  // a '.' has the empty extension.
  cow_List<VRKBasUtlFilePath> FindFileNamesWithExtension(cow_String extension) const;

 private:
  cow_List<VRKBasUtlFilePath> m_Files;
  cow_List<VRKBasUtlFilePath> m_Directories;
};

#endif  // UTL_DIROBJECT_H
