#include "uti_Redirection.h"

#include <errno.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "VRKTestLibrary.h"
#include "nex_TextException.h"
#include "uti_IOErrorException.h"

namespace {

std::string Cwd(const std::string& name) {
  char cwd[4096];
  return std::string(getcwd(cwd, sizeof cwd)) + "/" + name;
}

// The text of the error that building or changing a redirection raises, empty for none.
template <class Action>
std::string Failure(Action action) {
  try {
    action();
  } catch (const nex_Exception& error) {
    return cow_String(error.AsString()).c_str();
  }
  return "";
}

// "<descriptor>:<path>[+]" for each stream, "-" for an undefined one.
std::string Slots(const uti_Redirection& redirection) {
  std::string text;
  for (int stream = 0; stream < 3; ++stream) {
    const uti_Redirection::Redirector& slot = redirection.getRedirector(stream);
    if (stream > 0) text += " ";
    if (slot.isUndefined()) {
      text += "-";
      continue;
    }
    text += std::to_string(slot.handle.descriptor) + ":" + slot.handle.path.c_str();
    if (slot.append) text += "+";
  }
  return text;
}

class RedirectionTest : public VRKLibraryTest {};

TEST_F(RedirectionTest, SymbolsFillEachStreamOnce) {
  const std::string in = Cwd("in"), out = Cwd("out");
  cow_List<cow_String> six;
  for (const char* item : {"<", "in", ">>", "out", "2>", "/e"})
    six.Append(item);
  EXPECT_EQ(Slots(uti_Redirection(six)), "-1:" + in + " -1:" + out + "+ -1:/e");
  EXPECT_EQ(Slots(uti_Redirection(">&", "out")), "- -1:" + out + " 1:");
  EXPECT_EQ(Slots(uti_Redirection(">>&", 5 - 4, "<", VRKBasUtlFilePath("in"))),
            "-1:" + in + " 1:+ 1:");

  cow_List<cow_String> seven = six, five = six;
  seven.Append("x");
  five.Pop();
  EXPECT_EQ(Failure([&] { uti_Redirection r(seven); }), "Two many redirection arguments");
  EXPECT_EQ(Failure([&] { uti_Redirection r(five); }), "Redirection arguments must be paired");
  EXPECT_EQ(Failure([] { uti_Redirection r(">&", "a", "2>", "b"); }),
            "Stream stderr has already redirected.");
  EXPECT_EQ(Failure([] { uti_Redirection r("<", "a", "<", "b"); }),
            "Stream stdin has already redirected.");
  EXPECT_EQ(Failure([] { uti_Redirection r("2>&1", "a"); }), "Unrecognized redirector symbol");
  for (const char* symbol : {"<", ">", "2>", ">>", "2>>", ">&", ">>&"})
    EXPECT_TRUE(uti_Redirection::IsSymbol(symbol)) << symbol;
  EXPECT_FALSE(uti_Redirection::IsSymbol("&>"));

  // A descriptor that isn't open fails in fstat, with the call's own result as the code.
  try {
    uti_Redirection r("<", 999);
    FAIL();
  } catch (const uti_IOErrorException& error) {
    EXPECT_EQ(error.Function(), "fstat");
    EXPECT_EQ(error.Code(), -1);
  }

  uti_Redirection partial(">", "log");
  partial.Nullify();
  EXPECT_EQ(Slots(partial), "-1:/dev/null -1:" + Cwd("log") + " -1:/dev/null");
}

TEST_F(RedirectionTest, TextIsReadAsOnACommandLine) {
  const struct {
    const char* text;
    std::string slots;
  } good[] = {
      {"", "- - -"},
      {"< in >& 'my log'", "-1:" + Cwd("in") + " -1:" + Cwd("my log") + " 1:"},
      {"2>>/e >\"/o\"", "- -1:/o -1:/e+"},
      {"  >>/a\\ b  ", "- -1:/a b+ -"},
  };
  for (const auto& c : good)
    EXPECT_EQ(Slots(uti_Redirection(cow_String(c.text))), c.slots) << c.text;
  const struct {
    const char* text;
    const char* error;
  } bad[] = {
      {"x > y", "target without a redirection at position 1 of the command line"},
      {"> a >", "redirection without a target at position 5 of the command line"},
      {">> < a", "redirection without a target at position 1 of the command line"},
      {"<< a", "unsupported redirection at position 1 of the command line"},
      {"> 'a", "unterminated single quote at position 3 of the command line"},
      {"> a|b", "character that needs quoting at position 4 of the command line"},
      {"> a > b", "Stream stdout has already redirected."},
  };
  for (const auto& c : bad)
    EXPECT_EQ(Failure([&] { uti_Redirection r{cow_String(c.text)}; }), c.error) << c.text;
}

TEST_F(RedirectionTest, OwnsTheDescriptorsGivenAndOpenedButNeverTheStandardOnes) {
  const std::string before = VRKOpenDescriptors();
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  {
    uti_Redirection redirection("<", ends[0], "2>", 1);
    uti_Redirection other(">", ends[1]);
  }
  EXPECT_EQ(fcntl(1, F_GETFD), 0);
  EXPECT_EQ(VRKOpenDescriptors(), before);

  // A failed open leaves the slots as they were, with nothing opened left behind.
  VRKScratchDir dir;
  const std::string input = dir.File("in");
  ::close(::open(input.c_str(), O_CREAT | O_WRONLY, 0600));
  uti_Redirection files("<", input.c_str(), ">", dir.File("no/out").c_str());
  try {
    files.OpenFiles();
    FAIL();
  } catch (const uti_IOErrorException& error) {
    EXPECT_EQ(error.Code(), ENOENT);
    EXPECT_EQ(error.Subject(), dir.File("no/out").c_str());
  }
  EXPECT_EQ(files.getRedirector(0).handle.descriptor, -1);
  EXPECT_EQ(VRKOpenDescriptors(), before);

  // A pipe to a stream that has a target is refused, and made for none.
  EXPECT_EQ(Failure([&] { files.ConnectStdoutPipe(); }), "Stream stdout has already redirected.");
  EXPECT_EQ(VRKOpenDescriptors(), before);
  EXPECT_EQ(Failure([&] { files.ConnectStdinPipe(); }), "Stream stdin has already redirected.");
  EXPECT_EQ(VRKOpenDescriptors(), before);
  {
    uti_Redirection piped;
    const int write = piped.ConnectStdinPipe();
    ASSERT_EQ(::write(write, "x", 1), 1);
    char byte = 0;
    EXPECT_EQ(::read(piped.getRedirector(0).handle.descriptor, &byte, 1), 1);
    EXPECT_EQ(byte, 'x');
    ::close(write);
  }
  EXPECT_EQ(VRKOpenDescriptors(), before);
}

}  // namespace
