// The redirection symbols of a command line and what each does, one table per thread.
#ifndef UTI_REDIRECTORMAP_H
#define UTI_REDIRECTORMAP_H

#include "VRKBasSharedContainers.h"
#include "thr_ThreadSingleton.h"

class RedirectorMap : public thr_ThreadSingleton<RedirectorMap> {
 public:
  struct Entry {
    int stream;        // 0, 1 or 2
    bool append;       // the file is appended to, not truncated
    bool mergeStderr;  // stderr follows stdout
  };

  // The entry of a symbol; null for text that is none of the seven symbols.
  const Entry* Find(const cow_String& symbol) const;

 private:
  friend class thr_ThreadSingletonBase<RedirectorMap>;
  RedirectorMap();
  ~RedirectorMap();

  cow_Map<cow_String, Entry> m_Symbols;
};

#endif  // UTI_REDIRECTORMAP_H
