#include "uti_WebBrowser.h"

#include <errno.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>

#include "nex_TextException.h"
#include "uti_IOErrorException.h"
#include "uti_Spawn.h"

template class omi_SingletonBase<uti_WebBrowser>;

namespace {

bool IsDirectory(const char* path) {
  struct stat status;
  return path != nullptr && *path != 0 && ::stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

// The argument with "%s" replaced by the page and "%%" by "%"; `used` is set when a "%s" was
// there.
cow_String Substitute(const cow_String& argument, const cow_String& page, bool& used) {
  cow_String result;
  const char* text = argument.c_str();
  for (int i = 0; i < argument.Length(); ++i) {
    if (text[i] == '%' && (text[i + 1] == 's' || text[i + 1] == '%')) {
      used |= text[++i] == 's';
      result += text[i] == 's' ? page : cow_String("%");
    } else {
      result += text[i];
    }
  }
  return result;
}

void WriteAll(int fd, const cow_String& text, const cow_String& path) {
  const char* data = text.c_str();
  for (int left = text.Length(); left > 0;) {
    const ssize_t written = ::write(fd, data, static_cast<size_t>(left));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) {
      const int error = errno;
      ::close(fd);
      ::unlink(path.c_str());
      NEX_THROW(uti_IOErrorException("write", error, path));
    }
    data += written;
    left -= static_cast<int>(written);
  }
}

}  // namespace

uti_WebBrowser::uti_WebBrowser() {
  const char* browsers = ::getenv("BROWSER");
  for (const char* entry = browsers; entry != nullptr && *entry != 0;) {
    const char* end = std::strchr(entry, ':');
    const int length = end ? static_cast<int>(end - entry) : static_cast<int>(std::strlen(entry));
    if (length > 0) m_Commands.Append(cow_String(entry, length));
    entry = end ? end + 1 : nullptr;
  }
  m_Commands.Append("xdg-open");
}

uti_WebBrowser::~uti_WebBrowser() = default;

cow_String uti_WebBrowser::Open(const cow_String& url) {
  const cow_String page = WritePage(url.c_str()[0] == '/' ? "file://" + url : url);
  for (int i = 0; i < m_Commands.Count(); ++i) {
    if (Start(m_Commands[i], page)) return page;
  }
  ::unlink(page.c_str());
  NEX_THROW(nex_TextException(
      nex_Translate("uti_WebBrowser: no web browser could be started for %s", url)));
}

bool uti_WebBrowser::Start(const cow_String& entry, const cow_String& page) {
  try {
    uti_Spawn::Parser parser(entry);
    cow_List<cow_String> arguments;
    bool used = false;
    for (int i = 0; i < parser.Arguments().Count(); ++i)
      arguments.Append(Substitute(parser.Arguments()[i], page, used));
    if (!used) arguments.Append(page);
    uti_Spawn::Daemon(parser.Command(), parser.Directory(), arguments, parser.Redirection(),
                      parser.EnvironmentOver(uti_Environment()));
    return true;
  } catch (const nex_Exception&) {
    return false;  // not installed, not runnable, or an entry that doesn't read: the next one
  }
}

cow_String uti_WebBrowser::WritePage(const cow_String& url) const {
  const char* directory = ::getenv("TMPDIR");
  cow_String path = IsDirectory(directory) ? cow_String(directory) : cow_String("/tmp");
  path += "/LnqBrowserXXXXXX.html";
  const int fd = ::mkostemps(const_cast<char*>(path.c_str()), 5, O_CLOEXEC);
  if (fd < 0) NEX_THROW(uti_IOErrorException("mkstemps", errno, path));
  WriteAll(fd, RedirectPage(url), path);
  ::close(fd);
  return path;
}

cow_String uti_WebBrowser::RedirectPage(const cow_String& url) {
  static const char kHex[] = "0123456789ABCDEF";
  cow_String address;
  for (int i = 0; i < url.Length(); ++i) {
    const unsigned char c = static_cast<unsigned char>(url.c_str()[i]);
    if (c <= ' ' || c >= 0x7F || std::strchr("\"'<>\\`", c) != nullptr) {
      const char escaped[] = {'%', kHex[c >> 4], kHex[c & 15], 0};
      address += escaped;
    } else if (c == '&') {
      address += "&amp;";
    } else {
      address += static_cast<char>(c);
    }
  }
  cow_String page = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\">\n";
  page += "<meta http-equiv=\"refresh\" content=\"0; url=" + address + "\">\n";
  page += "<title>Opening " + address + "</title></head>\n";
  page += "<body><a href=\"" + address + "\">" + address + "</a></body></html>\n";
  return page;
}
