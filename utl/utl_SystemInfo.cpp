#include "utl_SystemInfo.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>

#include "VRKBasUtlPlatform.h"
#include "mem_Alloc.h"

namespace {

// The local time now, formatted.
cow_String LocalTime(const char* format) {
  const std::time_t now = std::time(nullptr);
  std::tm local;
  char text[128];
  if (::localtime_r(&now, &local) == nullptr) return cow_String();
  return cow_String(text, static_cast<int>(std::strftime(text, sizeof text, format, &local)));
}

char* PrintNumber(unsigned long number, char* text) {
  std::sprintf(text, "%lu", number);
  return text;
}

}  // namespace

cow_String utl_getHostName() {
  char name[256];
  if (::gethostname(name, sizeof name) != 0) return cow_String();
  name[sizeof name - 1] = '\0';
  return cow_String(name);
}

// The user's entry in the system's accounts, as the Windows logon name would be.
cow_String utl_getUserName() {
  passwd entry;
  passwd* found = nullptr;
  char buffer[4096];
  if (::getpwuid_r(::geteuid(), &entry, buffer, sizeof buffer, &found) != 0 || found == nullptr) {
    return cow_String();
  }
  const cow_String name(entry.pw_name);
  return name.Length() <= 256 ? name : cow_String();
}

cow_String utl_getDate() {
  return LocalTime("%d-%b-%Y");
}

cow_String utl_getTime() {
  return LocalTime("%H:%M:%S");
}

int utl_getNumberCpus() {
  return utl_getNumberCpusBase();
}

int utl_getCpusClockSpeed() {
  return utl_getCpusClockSpeedBase();
}

bool utl_SetMemoryLimit(unsigned limit) {
  return mem_Mallopt(-5, limit) != 0;
}

char* utl_GetMemoryLimit(char* text) {
  return PrintNumber(mem_MemoryLimit(), text);
}

char* utl_GetMemoryFootprint(char* text) {
  return PrintNumber(mem_Footprint(), text);
}
