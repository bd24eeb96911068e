// Opens a page in the user's web browser, through a small redirect page written to a
// temporary file, so that the browser gets the whole address, query and fragment included,
// whatever its command line does with such text:
//
//   uti_WebBrowser::Instance().Open("https://example.com/manual.html#restart");
//
// The browser: each entry of the BROWSER variable in turn (entries separated by ":"), then
// xdg-open. An entry is a command line as uti_Spawn::Parser reads it; "%s" in its arguments
// stands for the page and "%%" for "%", and an entry without "%s" gets the page as its last
// argument. The first entry that starts is the browser: it runs in a session of its own,
// with its standard streams on the null device, and nobody waits for it. Whether it then
// shows the page is its own business.
//
// The page goes to the directory that TMPDIR names, or /tmp, as "LnqBrowserXXXXXX.html", and
// stays there: the browser may read it long after Open returns, even after the program has
// ended. A text that begins with "/" is taken as a local file and opened as a file: address.
#ifndef UTI_WEBBROWSER_H
#define UTI_WEBBROWSER_H

#include "VRKBasExport.h"
#include "VRKBasSharedContainers.h"
#include "cow_String.h"
#include "omi_Singleton.h"

class uti_WebBrowser;
extern template class VRKLNU_EXPORT omi_SingletonBase<uti_WebBrowser>;

// One per process, made at the first Instance, which must not race another thread's, and
// destroyed when package uti stops; it reads BROWSER when it is made. Open is for one
// thread at a time.
class VRKLNU_EXPORT uti_WebBrowser : public omi_Singleton<uti_WebBrowser> {
 public:
  // Writes the redirect page for `url` and starts the browser on it; returns the page's
  // path. Throws uti_IOErrorException when the page can't be written, and nex_TextException
  // when no browser could be started; the page is removed again in that case.
  cow_String Open(const cow_String& url);

  // The browser commands to try, in order.
  const cow_List<cow_String>& Commands() const { return m_Commands; }

  // The redirect page's text for `url`: a refresh to the address with bytes outside printable
  // ASCII, blanks, quotes, "<", ">", "\" and "`" written as %XX, and "&" as "&amp;".
  static cow_String RedirectPage(const cow_String& url);

 private:
  friend class omi_SingletonBase<uti_WebBrowser>;
  uti_WebBrowser();
  ~uti_WebBrowser();

  cow_String WritePage(const cow_String& url) const;
  // Starts one entry on the page; false when it can't be started.
  static bool Start(const cow_String& entry, const cow_String& page);

  cow_List<cow_String> m_Commands;
};

#endif  // UTI_WEBBROWSER_H
