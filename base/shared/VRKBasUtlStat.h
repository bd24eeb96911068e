// The status of a path, looked at once when the object is made (links are followed).
//
//   VRKBasUtlStat status(cow_String("/tmp"));
//   if (status.IsDir()) ...
#ifndef VRKBASUTLSTAT_H
#define VRKBASUTLSTAT_H

#include "VRKBasExport.h"
#include "cow_String.h"

class VRKLNU_EXPORT VRKBasUtlStat {
 public:
  explicit VRKBasUtlStat(const cow_String& path);

  // False when the path could not be looked at; Errno() then tells why.
  bool Exists() const { return m_Errno == 0; }
  bool IsDir() const { return m_IsDir; }
  bool IsFile() const { return m_IsFile; }
  // Bytes, 0 when the path doesn't exist.
  long long Size() const { return m_Size; }
  // Seconds since the Unix epoch.
  double ModificationTime() const { return m_ModificationTime; }
  int Errno() const { return m_Errno; }

 private:
  int m_Errno = 0;
  bool m_IsDir = false;
  bool m_IsFile = false;
  long long m_Size = 0;
  double m_ModificationTime = 0.0;
};

#endif  // VRKBASUTLSTAT_H
