#include "nex_TypeTable.h"

#include <iterator>

#include "cls_ClassRegistrar.h"
#include "internal/nex_Setup.h"
#include "nex_BadCastException.h"
#include "nex_TextException.h"
#include "typ_ArchCompTable.h"

namespace {

constexpr unsigned short kFacility = 31;
constexpr int kException = 4;
constexpr unsigned kNoParent = 1;
constexpr unsigned kRoot = 0x1F0001;

const typ_Entry kTypes[] = {
    {0, kNoParent, nullptr},
    {kException, kNoParent, "nex_Exception"},
    {kException, kRoot, "nex_TextException"},
    {kException, kRoot, "nex_CommandException"},
    {kException, kRoot, "nex_AssertException"},
    {kException, kRoot, "nex_BadCastException"},
    {kException, kRoot, "nex_ExitException"},
    {kException, kRoot, "nex_InvalidObjException"},
    {kException, kRoot, "nex_SystemErrorException"},
    {kException, kRoot, "nex_OutOfMemoryException"},
};

// The registrar's misses are reported from this file under fixed lines, which readers of
// old reports know them by.
constexpr const char* kSource = "nex_TypeTable";
constexpr int kClassLine = 46;
constexpr int kVersionLine = 60;
constexpr int kNameLine = 74;

const char* NameOf(unsigned classId) {
  const char* name = typ_ArchCompTable::GetName(classId);
  return name ? name : "";
}

int ClassPresent(const cls_ClassRegistrar& registrar, unsigned classId) {
  if (registrar.ClassIsPresent(classId)) return 1;
  nex_TextException(
      nex_Translate("cls_ClassRegistrar::ConstGet failed: Class %s is not declared in metadata.",
                    NameOf(classId)))
      .Throw(kSource, kClassLine);
}

int VersionPresent(const cls_ClassRegistrar& registrar, unsigned classId, int version) {
  if (registrar.ClassVersionIsPresent(classId, version)) return 1;
  nex_TextException(nex_Translate("cls_ClassRegistrar::GetClassMetadata failed: Class "
                                  "%s/Version %d is not declared in metadata.",
                                  NameOf(classId), version))
      .Throw(kSource, kVersionLine);
}

int NamePresent(const cls_ClassRegistrar& registrar, const cow_String& name) {
  if (registrar.ClassNameIsPresent(name)) return 1;
  nex_TextException(nex_Translate("cls_ClassRegistrar::GetClassID failed: Class ID can't be "
                                  "retrieved from class name %s.",
                                  name))
      .Throw(kSource, kNameLine);
}

}  // namespace

void nex_TypeTableSetUp() {
  cls_ClassRegistrar::SetFailureHooks(ClassPresent, VersionPresent, NamePresent);
  typ_ArchCompTable::InsertEntry(kFacility, typ_ArchCompEntry(kTypes, std::size(kTypes)));
}

void nex_TypeTableTearDown() {
  cls_ClassRegistrar::SetFailureHooks(nullptr, nullptr, nullptr);
}

bool nex_canDynamicCastPtr(unsigned int from, unsigned int to) {
  return from == to || typ_ArchCompTable::IsParent(to, from);
}

bool nex_canDynamicCastRef(unsigned int from, unsigned int to, const char* file, int line) {
  if (nex_canDynamicCastPtr(from, to)) return true;
  nex_BadCastException(nex_Translate("Bad Cast: From `%s' To '%s'.", NameOf(to), NameOf(from)))
      .Throw(file, line);
}
