// Names that a job derives from its environment and command line: the path of a job file,
// and the name of the driver program that started the job.
//
//   cow_String log = utl_JobFileName(".log");  // <outdir>/<job>.log, absolute
//
// Reading the environment is safe from any thread that doesn't change it at the same time.
#ifndef UTL_JOBFILENAME_H
#define UTL_JOBFILENAME_H

#include "VRKBasExport.h"
#include "cow_String.h"

// The absolute path, in the directory of the command-line option `outdir`, of the job's name
// followed by `suffix`. The job's name is the environment variable SUPAUXNAME when it is set
// and doesn't begin with a blank (an empty value counts as set), else the option `job`. An
// option that is needed and absent raises utl_MissingCmdLineArgException.
VRKLNU_EXPORT cow_String utl_JobFileName(cow_String suffix);

// The base name, without directory and extension, of the program that the environment
// variable LUN_COMMAND names, with "lnq" for "launcher". Raises nex_TextException "Failed to
// determine driver name" when the variable is unset.
VRKLNU_EXPORT cow_String utl_getDriverName();

#endif  // UTL_JOBFILENAME_H
