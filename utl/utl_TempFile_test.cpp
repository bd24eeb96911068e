#include "utl_TempFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <string>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "utl_TempFileException.h"

namespace {

using UtlTempFileTest = VRKLibraryTest;

// What `call` raises, as "<text>", or "-" when it raises nothing.
template <class Call>
std::string Raised(Call call) {
  try {
    call();
  } catch (const utl_TempFileCantExc& failure) {
    return std::string("cant: ") + failure.AsString().c_str();
  } catch (const nex_Exception& failure) {
    return failure.AsString().c_str();
  }
  return "-";
}

// `text` with the file's name as "NAME".
std::string Renamed(std::string text, const utl_TempFile& file) {
  const std::string name = file.Name().c_str();
  const size_t at = text.find(name);
  return at == std::string::npos ? text : text.replace(at, name.size(), "NAME");
}

TEST_F(UtlTempFileTest, TheDirectoryIsTheFirstCandidateThatIsADirectory) {
  if (VRKChildRole() == "name") {
    VRKSetCommandLine(VRKChildArgs());
    utl_TempFile named(".tmp");  // touches nothing, even with no directory to be had
    const std::string outcome = Raised([&] { named.Name(); });
    if (outcome == "-") {
      std::fputs(named.Name().c_str(), stderr);
    } else {
      utl_TempFile created(""), measured("");
      std::fprintf(stderr, "%s %s %s", outcome.c_str(), Raised([&] { created.Create(); }).c_str(),
                   Raised([&] { measured.AvailableSpace(); }).c_str());
    }
    VRKChildExit(0);
  }
  VRKScratchDir option, scratch, temporary;
  const std::string file = option.File("plain");
  std::ofstream(file) << "not a directory";
  const std::string unset = "<unset>";
  const std::string cant = "cant: *** ERROR: Can't create unique temporary file name.";
  const std::string none = cant + " " + cant + " " + cant;
  // The tmpdir option, SCRATCH, TMPDIR, and the directory chosen or the failures.
  const struct {
    std::string tmpdir, scratch, temporary, expected;
  } cases[] = {
      {option.Path(), scratch.Path(), temporary.Path(), option.Path()},
      {file, scratch.Path(), temporary.Path(), scratch.Path()},
      {unset, scratch.Path(), temporary.Path(), scratch.Path()},
      {unset, file, temporary.Path() + "/", temporary.Path()},
      {option.Path() + "/", unset, unset, option.Path()},
      {"", "", unset, none},
      {file, file, file, none},
  };
  for (const auto& c : cases) {
    VRKChild child("name");
    if (c.tmpdir != unset) child.args = {"-tmpdir", c.tmpdir};
    for (const auto& [name, value] : {std::pair{"SCRATCH", c.scratch}, {"TMPDIR", c.temporary}}) {
      if (value == unset) {
        child.unset.push_back(name);
      } else {
        child.env.emplace_back(name, value);
      }
    }
    const VRKChildResult result = child.Run();
    ASSERT_EQ(result.exitCode, 0);
    if (c.expected == none) {
      EXPECT_EQ(result.err, none);
    } else {
      EXPECT_TRUE(
          std::regex_match(result.err, std::regex(c.expected + "/LnqTempFile[A-Za-z0-9]{6}\\.tmp")))
          << c.tmpdir << " " << c.scratch << " " << c.temporary << ": " << result.err;
    }
  }
}

TEST_F(UtlTempFileTest, NamedCreatedOpenedAndRemoved) {
  if (VRKChildRole() == "life") {
    const std::string dir = VRKChildArgs()[0];
    std::string report;
    {
      utl_TempFile dotted(".tmp"), bare("tmp"), none(""), never("");
      for (utl_TempFile* file : {&dotted, &bare, &none})
        report += std::string(file->Name().c_str()).substr(dir.size()) + " ";
      // Never created: Open fails, OpenIfPresent says so.
      report += Renamed(Raised([&] { never.Open(); }), never) + ". ";
      report += never.OpenIfPresent() ? "present " : "absent ";
      report += std::to_string(never.Descriptor()) + " ";

      utl_TempFile made(".dat");
      made.Create();
      struct stat status;
      stat(made.Name().c_str(), &status);
      report += std::to_string(status.st_mode & 0777) + " ";
      report += Renamed(Raised([&] { made.Create(); }), made) + ". ";
      if (write(made.Descriptor(), "abc", 3) != 3) report += "unwritten ";
      made.Close();
      made.Close();
      made.Open();
      char back[4] = {};
      report += read(made.Descriptor(), back, 3) == 3 ? back : "unread";
    }
    // Everything named was removed, created or not.
    std::fputs((report + (rmdir(dir.c_str()) == 0 ? " empty" : " left")).c_str(), stderr);
    VRKChildExit(0);
  }
  VRKScratchDir scratch;
  const std::string dir = scratch.File("own");
  ASSERT_EQ(mkdir(dir.c_str(), 0700), 0);
  VRKChild child("life");
  child.env = {{"SCRATCH", dir}};
  child.args = {dir};
  const VRKChildResult result = child.Run();
  ASSERT_EQ(result.exitCode, 0);
  const std::string id = "LnqTempFile[A-Za-z0-9]{6}";
  const std::string failed = "\\*\\*\\* ERROR: Can't create temporary file: NAME, system error: ";
  EXPECT_TRUE(std::regex_match(
      result.err, std::regex("/" + id + "\\.tmp /" + id + "\\.tmp /" + id + " " + failed +
                             "No such file or directory\\. absent -1 384 " + failed +
                             "File exists\\. abc empty")))
      << result.err;
}

}  // namespace
