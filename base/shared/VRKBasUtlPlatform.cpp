#include "VRKBasUtlPlatform.h"

#include <sys/utsname.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

// Reads the first number of a one-line file; false when there is none.
bool ReadNumber(const char* path, double& value) {
  FILE* file = std::fopen(path, "re");
  if (file == nullptr) return false;
  const bool read = std::fscanf(file, "%lf", &value) == 1;
  std::fclose(file);
  return read;
}

// The "cpu MHz" line of /proc/cpuinfo, for systems without frequency scaling files.
double CpuInfoMegahertz() {
  FILE* file = std::fopen("/proc/cpuinfo", "re");
  if (file == nullptr) return 0.0;
  char line[256];
  double megahertz = 0.0;
  while (std::fgets(line, sizeof line, file)) {
    if (std::strncmp(line, "cpu MHz", 7) == 0) {
      if (const char* colon = std::strchr(line, ':')) std::sscanf(colon + 1, "%lf", &megahertz);
      break;
    }
  }
  std::fclose(file);
  return megahertz;
}

}  // namespace

cow_String VRKBasUtlGetPlatform() {
  utsname name;
  if (::uname(&name) != 0) return cow_String("linux");
  if (std::strcmp(name.machine, "x86_64") == 0) return cow_String("linux86_64");
  return cow_String("linux_") + name.machine;
}

int VRKBasUtlsleep(unsigned milliseconds) {
  timespec left{static_cast<time_t>(milliseconds / 1000),
                static_cast<long>(milliseconds % 1000) * 1000000L};
  while (::nanosleep(&left, &left) != 0 && errno == EINTR) {
  }
  return 0;
}

int utl_getNumberCpusBase() {
  const long count = ::sysconf(_SC_NPROCESSORS_ONLN);
  return count > 0 ? static_cast<int>(count) : 1;
}

int utl_getCpusClockSpeedBase() {
  double kilohertz = 0.0;
  if (ReadNumber("/sys/devices/system/cpu/cpu0/cpufreq/cpuinfo_max_freq", kilohertz)) {
    return static_cast<int>(kilohertz / 1000.0 + 0.5);
  }
  return static_cast<int>(CpuInfoMegahertz() + 0.5);
}
