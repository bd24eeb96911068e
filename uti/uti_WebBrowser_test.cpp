#include "uti_WebBrowser.h"

#include <dirent.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "nex_Exception.h"

namespace {

// Records its process id and arguments, one a line, then "end".
constexpr const char* kFakeBrowser =
    "#!/bin/sh\n"
    "{ echo $$; for a in \"$@\"; do printf '%s\\n' \"$a\"; done; echo end; } > \"$FAKE_RECORD\"\n";

constexpr const char* kUrl = "http://example.com/a b?x=1&y=\"2\"#part";

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
    lines.push_back(text.substr(at, end - at));
  return lines;
}

std::vector<std::string> Listing(const std::string& directory) {
  std::vector<std::string> names;
  DIR* dir = ::opendir(directory.c_str());
  while (const dirent* entry = dir ? ::readdir(dir) : nullptr) {
    if (entry->d_name[0] != '.') names.push_back(directory + "/" + entry->d_name);
  }
  if (dir) ::closedir(dir);
  return names;
}

// Whether the process still runs: not gone and not a zombie.
bool Running(const std::string& pid) {
  const std::string stat = VRKReadFile("/proc/" + pid + "/stat");
  const size_t end = stat.rfind(')');
  return end != std::string::npos && end + 2 < stat.size() && stat[end + 2] != 'Z' &&
         stat[end + 2] != 'X';
}

class WebBrowserTest : public VRKLibraryTest {};

TEST_F(WebBrowserTest, TheRedirectPageCarriesTheWholeAddressSafely) {
  const std::string page = uti_WebBrowser::RedirectPage(kUrl).c_str();
  EXPECT_NE(page.find("<meta http-equiv=\"refresh\" content=\"0; url="
                      "http://example.com/a%20b?x=1&amp;y=%222%22#part\">\n"),
            std::string::npos)
      << page;
  EXPECT_NE(page.find("<a href=\"http://example.com/a%20b?x=1&amp;y=%222%22#part\">"),
            std::string::npos);
  const std::string odd = uti_WebBrowser::RedirectPage("x<'\\`>\x7f\xc3\xa9\t").c_str();
  EXPECT_NE(odd.find("url=x%3C%27%5C%60%3E%7F%C3%A9%09\""), std::string::npos) << odd;
}

// Each case runs in a child with the fake browser as "fake-browser" and "xdg-open" on PATH;
// the child opens the page and the library stops, and the fake must have been given the page
// and have ended, with nothing left on disk but the page.
TEST_F(WebBrowserTest, OpensThePageInTheBrowserItFinds) {
  if (VRKChildRole() == "open") {
    const std::vector<std::string> args = VRKChildArgs();
    try {
      std::printf("\x1e%s\n", uti_WebBrowser::Instance().Open(args[0].c_str()).c_str());
    } catch (const nex_Exception& error) {
      std::printf(
          "\x1e"
          "failed: %s\n",
          cow_String(error.AsString()).c_str());
    }
    std::fflush(stdout);
    VRKLnuBasicUtils_finalize(m_Tally);
    VRKChildExit(0);
  }
  const struct {
    const char* browser;  // null: unset
    bool found;
    std::vector<std::string> args;  // "PAGE" for the page's path
  } cases[] = {
      {nullptr, true, {"PAGE"}},
      {"absent-browser:fake-browser --new-window %s --title=100%%",
       true,
       {"--new-window", "PAGE", "--title=100%"}},
      {"fake-browser 'two words'", true, {"two words", "PAGE"}},
      {"absent-browser", false, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.browser ? c.browser : "BROWSER unset");
    VRKScratchDir bin, tmp, records;
    for (const char* name : {"fake-browser", "xdg-open"}) {
      if (!c.found) break;
      FILE* script = std::fopen(bin.File(name).c_str(), "w");
      std::fputs(kFakeBrowser, script);
      std::fclose(script);
      ::chmod(bin.File(name).c_str(), 0755);
    }
    VRKChild child("open");
    child.env = {{"PATH", bin.Path()}, {"TMPDIR", tmp.Path()}, {"FAKE_RECORD", records.File("r")}};
    if (c.browser)
      child.env.emplace_back("BROWSER", c.browser);
    else
      child.unset = {"BROWSER"};
    child.args = {c.args.size() == 1 ? "/doc/manual.html" : kUrl};
    const VRKChildResult result = child.Run();
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::string output = VRKChildOutput(result.out);
    const std::string said = output.substr(output.find('\x1e') + 1);
    if (!c.found) {
      EXPECT_EQ(said.rfind("failed: uti_WebBrowser: no web browser could be started", 0), 0u)
          << said;
      EXPECT_TRUE(Listing(tmp.Path()).empty());
      continue;
    }
    const std::string page = Lines(said).at(0);
    EXPECT_EQ(Listing(tmp.Path()), std::vector<std::string>{page});
    EXPECT_EQ(VRKReadFile(page), uti_WebBrowser::RedirectPage(child.args[0].c_str()[0] == '/'
                                                                  ? "file:///doc/manual.html"
                                                                  : kUrl)
                                     .c_str());
    ASSERT_TRUE(VRKEventually([&] {
      const std::vector<std::string> lines = Lines(VRKReadFile(records.File("r")));
      return !lines.empty() && lines.back() == "end";
    }));
    std::vector<std::string> recorded = Lines(VRKReadFile(records.File("r")));
    const std::string pid = recorded.front();
    recorded = std::vector<std::string>(recorded.begin() + 1, recorded.end() - 1);
    std::vector<std::string> expected = c.args;
    for (std::string& arg : expected)
      if (arg == "PAGE") arg = page;
    EXPECT_EQ(recorded, expected);
    EXPECT_TRUE(VRKEventually([&] { return !Running(pid); })) << "the browser still runs";
    EXPECT_EQ(Listing(bin.Path()).size(), 2u);
  }
}

// The browser object goes at the library's stop: a new one reads BROWSER again.
TEST_F(WebBrowserTest, IsMadeAgainAfterTheLibraryStops) {
  if (VRKChildRole() == "restart") {
    ::setenv("BROWSER", "first", 1);
    const cow_List<cow_String> before = uti_WebBrowser::Instance().Commands();
    ::setenv("BROWSER", "second:third", 1);
    const cow_List<cow_String> kept = uti_WebBrowser::Instance().Commands();
    VRKLnuBasicUtils_finalize(m_Tally);
    VRKLnuBasicUtils_initialize(m_Tally);
    const cow_List<cow_String> after = uti_WebBrowser::Instance().Commands();
    std::printf("%d %s %s %d %s %s %s\n", before.Count(), before[0].c_str(), kept[0].c_str(),
                after.Count(), after[0].c_str(), after[1].c_str(), after[2].c_str());
    std::fflush(stdout);
    VRKChildExit(0);
  }
  const VRKChildResult result = VRKChild("restart").Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
  EXPECT_NE(result.out.find("2 first first 3 second third xdg-open\n"), std::string::npos)
      << result.out;
}

}  // namespace
