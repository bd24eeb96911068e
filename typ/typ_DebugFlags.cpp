#include "typ_DebugFlags.h"

#include <atomic>
#include <climits>
#include <cstring>

#include "internal/typ_Setup.h"

namespace {

constexpr unsigned kSlots = 1024;

const char* facNames[kSlots];
std::atomic<int> levels[kSlots];

struct Facility {
  const char* name;
  unsigned short slot;
};

// The facilities by name and slot, ended by a null name.
constexpr Facility kFacilities[] = {
    {"uti", 2},           {"utl", 3},    {"ipc", 4},    {"xmd", 5},    {"dso", 6},    {"bas", 9},
    {"mdl", 10},          {"dbmD", 11},  {"dbmO", 12},  {"dbmT", 14},  {"ubi", 15},   {"omu", 19},
    {"obj", 23},          {"objT", 25},  {"cio", 26},   {"lcs", 27},   {"inp", 30},   {"nex", 31},
    {"nexT", 32},         {"dmc", 33},   {"ddr", 34},   {"cls", 35},   {"g3d", 36},   {"eli", 37},
    {"afxI", 38},         {"ate", 39},   {"afxW", 40},  {"odb", 41},   {"chi", 42},   {"dia", 43},
    {"PythonZVTdbc", 44}, {"cnvC", 260}, {"cnvK", 261}, {"cnvG", 262}, {"modC", 268}, {"modG", 270},
    {"qryK", 273},        {"qryG", 274}, {"mduC", 276}, {"mduK", 277}, {"mduG", 278}, {"cmdC", 280},
    {"cmdG", 282},        {"sesK", 285}, {"sesC", 284}, {"gtkK", 289}, {"gtkG", 290}, {"inpK", 293},
    {"mdmC", 320},        {"mdmK", 321}, {"mdmG", 322}, {"oslC", 324}, {"oslK", 325}, {"oslG", 326},
    {"vtcC", 516},        {"vtcF", 519}, {"vtcK", 517}, {"vtcG", 518}, {"matC", 520}, {"matK", 521},
    {"matG", 522},        {"stpC", 524}, {"stpK", 525}, {"stpG", 526}, {"stbC", 528}, {"stbK", 529},
    {"stbG", 530},        {"visC", 532}, {"visK", 533}, {"visG", 534}, {"lbiC", 536}, {"lbiK", 537},
    {"lbiG", 538},        {"prfC", 540}, {"prfK", 541}, {"prfG", 542}, {"asmC", 544}, {"asmK", 545},
    {"asmG", 546},        {"itnC", 548}, {"itnK", 549}, {"itnG", 550}, {"mgnC", 552}, {"mgnK", 553},
    {"mgnG", 554},        {"prtC", 556}, {"prtK", 557}, {"prtG", 558}, {"sctC", 560}, {"sctK", 561},
    {"sctG", 562},        {"prpC", 564}, {"prpK", 565}, {"prpG", 566}, {"kmaC", 568}, {"kmaK", 569},
    {"kprC", 572},        {"korC", 576}, {"kamC", 580}, {"kamK", 581}, {"dtmF", 587}, {"dtmK", 585},
    {"dtmC", 584},        {"dtmG", 586}, {"ftsG", 590}, {"ftsK", 589}, {"mgnF", 595}, {"rgnK", 597},
    {"rgnF", 599},        {"rgnC", 596}, {"rgnG", 598}, {"sptF", 603}, {"sptK", 601}, {"sptG", 602},
    {"prtF", 607},        {"kseC", 608}, {"kseK", 609}, {"kbpC", 612}, {"kbpK", 613}, {"kadC", 616},
    {"kadK", 617},        {"edtK", 621}, {"edtG", 622}, {"mrfK", 625}, {"mrfG", 626}, {"qreK", 629},
    {"qreG", 630},        {"dgbK", 633}, {"dgpK", 637}, {"sktF", 643}, {"xypK", 645}, {"xypG", 646},
    {"kloC", 648},        {"kloK", 649}, {"kprK", 653}, {"jobC", 656}, {"jobK", 657}, {"jobG", 658},
    {"ajbC", 660},        {"ajbK", 661}, {"ldcK", 665}, {"ldcG", 666}, {"asoK", 669}, {"asoF", 671},
    {"kinC", 672},        {"kinK", 673}, {"odiK", 677}, {"odiC", 676}, {"kbeC", 680}, {"kbeK", 681},
    {"kbeG", 682},        {"kcnC", 684}, {"kcnK", 685}, {"kcnG", 686}, {"cnxK", 689}, {"cnxG", 690},
    {"anmG", 694},        {"desG", 698}, {"desC", 696}, {"desK", 697}, {"dsdC", 700}, {"dsdK", 701},
    {"kicC", 704},        {"ptoC", 708}, {"ptoK", 709}, {"dgtK", 713}, {"dgtG", 714}, {"sktK", 717},
    {"sktG", 718},        {"kcoC", 720}, {"kcoK", 721}, {"kspC", 724}, {"kspK", 725}, {"pthK", 729},
    {"pthG", 730},        {"klcC", 732}, {"klcG", 734}, {"klcK", 733}, {"skmC", 736}, {"skmK", 737},
    {"skmG", 738},        {"odpC", 740}, {"odpK", 741}, {"odpG", 742}, {"calK", 745}, {"kpfC", 748},
    {"kpfK", 749},        {"ampG", 754}, {"lyrG", 758}, {"prbG", 762}, {"repG", 766}, {"rnfF", 771},
    {"ftr", 769},         {"dtu", 770},  {"gut", 772},  {"bdo", 775},  {"brp", 776},  {"gsl", 778},
    {"ske", 779},         {"mes", 783},  {"aci", 784},  {"msh", 800},  {"mut", 801},  {"mgr", 802},
    {"dns", 803},         {"mms", 804},  {"as2", 805},  {"dtr", 806},  {"max", 807},  {"mdp", 809},
    {"vtp", 810},         {"bme", 812},  {"geu", 813},  {"gml", 814},  {"gmu", 815},  {"psl", 816},
    {"rbc", 819},         {"rbu", 821},  {"att", 823},  {"tri", 824},  {"tet", 825},  {"bmg", 827},
    {"res", 828},         {"ome", 829},  {"gdy", 830},  {"shp", 831},  {"udd", 832},  {"gme", 835},
    {"gcu", 836},         {"ref", 837},  {"refG", 838}, {"rdb", 846},  {"rdbK", 847}, {"mgc", 853},
    {nullptr, 0},
};

// The slot of the facility whose name is the `length` characters at `name`, or -1.
int FindSlot(const char* name, size_t length) {
  for (unsigned slot = 0; slot < kSlots; ++slot) {
    const char* known = facNames[slot];
    if (known != nullptr && std::strncmp(known, name, length) == 0 && known[length] == '\0')
      return static_cast<int>(slot);
  }
  return -1;
}

bool SetLevel(const char* name, size_t length, int level) {
  const int slot = FindSlot(name, length);
  if (slot < 0) return false;
  levels[slot].store(level, std::memory_order_relaxed);
  return true;
}

// The decimal value of the digits [first, last), held at INT_MAX.
int ToLevel(const char* first, const char* last) {
  long long value = 0;
  for (; first != last && value < INT_MAX; ++first)
    value = value * 10 + (*first - '0');
  return value < INT_MAX ? static_cast<int>(value) : INT_MAX;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

void typ_DebugFlagsSetUp() {
  for (const Facility* facility = kFacilities; facility->name != nullptr; ++facility)
    facNames[facility->slot] = facility->name;
}

bool typ_DebugFlags::SetDebugFlags(const char* facility, int level) {
  return facility != nullptr && SetLevel(facility, std::strlen(facility), level);
}

bool typ_DebugFlags::ParseDebugFlags(const char* text) {
  bool allKnown = true;
  for (const char* next = text ? text : ""; *next != '\0';) {
    const char* const name = next;
    while (*next != '\0' && *next != '=' && *next != ',')
      ++next;
    if (*next != '=') return false;
    const char* const nameEnd = next++;
    const char* const digits = next;
    while (IsDigit(*next))
      ++next;
    if (*next != ',' && *next != '\0') return false;
    allKnown &= SetLevel(name, nameEnd - name, ToLevel(digits, next));
    if (*next == ',') ++next;
  }
  return allKnown;
}

int typ_DebugFlags::GetDebugFlags(unsigned facility) {
  return facility < kSlots ? levels[facility].load(std::memory_order_relaxed) : 0;
}

int typ_DebugFlags::GetDebugFlags(const char* facility) {
  const int slot = facility ? FindSlot(facility, std::strlen(facility)) : -1;
  return slot < 0 ? 0 : levels[slot].load(std::memory_order_relaxed);
}

const char* typ_DebugFlags::GetDebugFacilityName(unsigned facility) {
  return facility < kSlots ? facNames[facility] : nullptr;
}
