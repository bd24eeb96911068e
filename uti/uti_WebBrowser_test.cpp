#include "uti_WebBrowser.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "VRKLnuLifecycle.h"
#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "nex_Exception.h"

namespace {

// Records its arguments, each followed by "|", then its process id on a line of its own.
constexpr const char* kFakeBrowser =
    "#!/bin/sh\n"
    "{ printf '%s|' \"$@\"; printf '\\n%s\\n' $$; } > \"$FAKE_RECORD\"\n";

constexpr const char* kUrl = "http://example.com/a b?x=1&y=\"2\"#part";

size_t Entries(const std::string& directory) {
  const std::filesystem::directory_iterator it(directory);
  return static_cast<size_t>(std::distance(begin(it), end(it)));
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
  const std::string odd = uti_WebBrowser::RedirectPage("x<'\\`>\x7f\xc3\xa9\t").c_str();
  EXPECT_NE(odd.find("href=\"x%3C%27%5C%60%3E%7F%C3%A9%09\""), std::string::npos) << odd;
}

// Each case runs in a child with the fake browser as "fake-browser" and "xdg-open" on PATH;
// the child opens the page and stops the library, and the fake must have been given the page
// and have ended, with nothing left on disk but the page.
TEST_F(WebBrowserTest, OpensThePageInTheBrowserItFinds) {
  if (VRKChildRole() == "open") {
    std::ofstream said(VRKChildArgs()[1]);
    try {
      said << uti_WebBrowser::Instance().Open(VRKChildArgs()[0].c_str()).c_str();
    } catch (const nex_Exception& error) {
      said << "failed: " << cow_String(error.AsString()).c_str();
    }
    said.close();
    VRKLnuBasicUtils_finalize(m_Tally);
    VRKChildExit(0);
  }
  const struct {
    const char* browser;  // null: unset
    const char* url;
    std::string args;  // "PAGE" for the page's path; empty when none is found
  } cases[] = {
      {nullptr, "/doc/manual.html", "PAGE|"},
      {"absent-browser:fake-browser --new-window %s --title=100%%", kUrl,
       "--new-window|PAGE|--title=100%|"},
      {"fake-browser 'two words'", kUrl, "two words|PAGE|"},
      {"absent-browser", kUrl, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.browser ? c.browser : "BROWSER unset");
    VRKScratchDir bin, tmp, records;
    for (const char* name : {"fake-browser", "xdg-open"}) {
      std::ofstream(bin.File(name)) << (c.args.empty() ? "" : kFakeBrowser);
      ::chmod(bin.File(name).c_str(), 0755);
    }
    VRKChild child("open");
    child.env = {{"PATH", bin.Path()}, {"TMPDIR", tmp.Path()}, {"FAKE_RECORD", records.File("r")}};
    if (c.browser) child.env.emplace_back("BROWSER", c.browser);
    if (!c.browser) child.unset = {"BROWSER"};
    child.args = {c.url, records.File("said")};
    const VRKChildResult result = child.Run();
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const std::string page = VRKReadFile(records.File("said"));
    if (c.args.empty()) {
      EXPECT_EQ(page.rfind("failed: uti_WebBrowser: no web browser could be started", 0), 0u);
      EXPECT_EQ(Entries(tmp.Path()), 0u);
      continue;
    }
    EXPECT_EQ(std::filesystem::path(page).parent_path(), tmp.Path());
    EXPECT_EQ(Entries(tmp.Path()), 1u);
    const std::string url = c.url[0] == '/' ? std::string("file://") + c.url : c.url;
    EXPECT_EQ(VRKReadFile(page), uti_WebBrowser::RedirectPage(url.c_str()).c_str());
    ASSERT_TRUE(VRKEventually([&] {
      const std::string record = VRKReadFile(records.File("r"));
      return !record.empty() && record.back() == '\n';
    }));
    const std::string record = VRKReadFile(records.File("r"));
    std::string expected = c.args;
    expected.replace(expected.find("PAGE"), 4, page);
    const size_t cut = record.find('\n');
    EXPECT_EQ(record.substr(0, cut), expected);
    const std::string pid = record.substr(cut + 1, record.size() - cut - 2);
    ASSERT_EQ(std::to_string(std::atoi(pid.c_str())), pid);
    EXPECT_TRUE(VRKEventually([&] { return !Running(pid); })) << "the browser still runs";
  }
}

// The browser object goes at the library's stop: a new one reads BROWSER again.
TEST_F(WebBrowserTest, IsMadeAgainAfterTheLibraryStops) {
  if (VRKChildRole() == "restart") {
    ::setenv("BROWSER", "first", 1);
    const cow_String made = uti_WebBrowser::Instance().Commands()[0];
    ::setenv("BROWSER", "second", 1);
    const cow_String kept = uti_WebBrowser::Instance().Commands()[0];
    VRKLnuBasicUtils_finalize(m_Tally);
    VRKLnuBasicUtils_initialize(m_Tally);
    const cow_String remade = uti_WebBrowser::Instance().Commands()[0];
    VRKChildExit(made == "first" && kept == "first" && remade == "second" ? 0 : 1);
  }
  EXPECT_EQ(VRKChild("restart").Run().exitCode, 0);
}

}  // namespace
