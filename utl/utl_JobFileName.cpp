#include "utl_JobFileName.h"

#include <cstdlib>

#include "VRKBasUtlFilePath.h"
#include "nex_TextException.h"
#include "utl_CommandLine.h"
#include "utl_FilePathParser.h"

cow_String utl_JobFileName(cow_String suffix) {
  const utl_CommandLine& commandLine = utl_CommandLine::Instance();
  const char* auxiliary = std::getenv("SUPAUXNAME");
  cow_String name = auxiliary != nullptr && auxiliary[0] != ' ' ? cow_String(auxiliary)
                                                                : commandLine.ConstGetValue("job");
  name += suffix;
  return VRKBasUtlFilePath(commandLine.ConstGetValue("outdir"), name).AbsolutePathName();
}

cow_String utl_getDriverName() {
  const char* command = std::getenv("LUN_COMMAND");
  if (command == nullptr)
    NEX_THROW(nex_TextException(nex_Translate("Failed to determine driver name")));
  const cow_String path = VRKBasUtlFilePath(cow_String(command)).Portable().PathName();
  const cow_String name = utl_FilePathParser::BaseName(path);
  return name == "launcher" ? cow_String("lnq") : name;
}
