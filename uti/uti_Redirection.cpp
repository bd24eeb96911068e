#include "uti_Redirection.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cow_SystemErrorCode.h"
#include "internal/RedirectorMap.h"
#include "internal/uti_ShellWords.h"
#include "nex_SystemErrorException.h"
#include "nex_TextException.h"
#include "uti_IOErrorException.h"

namespace {

const char* const kStreamNames[] = {"stdin", "stdout", "stderr"};
constexpr int kMostItems = 6;

cow_String AbsolutePath(const cow_String& path) {
  return VRKBasUtlFilePath(path).AbsolutePathName();
}

[[noreturn]] void Refuse(const char* text) {
  NEX_THROW(nex_TextException(nex_Translate(text)));
}

}  // namespace

uti_Redirection::Handle::Handle(const char* path) : path(AbsolutePath(path)) {}

uti_Redirection::Handle::Handle(const cow_String& path) : path(AbsolutePath(path)) {}

uti_Redirection::Handle::Handle(const VRKBasUtlFilePath& path) : path(path.AbsolutePathName()) {}

uti_Redirection::uti_Redirection(const cow_String& text) {
  const cow_List<uti_ShellToken> tokens = uti_ShellWords(text);
  for (int i = 0; i < tokens.Count();) {
    if (!tokens[i].isSymbol) uti_ShellError("target without a redirection", tokens[i].position);
    i = uti_RedirectToken(*this, tokens, i);
  }
}

uti_Redirection::uti_Redirection(const cow_String& symbol, const Handle& handle) {
  Redirect(symbol, handle);
}

uti_Redirection::uti_Redirection(const cow_String& symbol1, const Handle& handle1,
                                 const cow_String& symbol2, const Handle& handle2)
    : uti_Redirection(symbol1, handle1) {
  Redirect(symbol2, handle2);
}

uti_Redirection::uti_Redirection(const cow_String& symbol1, const Handle& handle1,
                                 const cow_String& symbol2, const Handle& handle2,
                                 const cow_String& symbol3, const Handle& handle3)
    : uti_Redirection(symbol1, handle1, symbol2, handle2) {
  Redirect(symbol3, handle3);
}

uti_Redirection::uti_Redirection(const cow_List<cow_String>& items) {
  // "Two many" is the message as users know it.
  if (items.Count() > kMostItems) Refuse("Two many redirection arguments");
  if (items.Count() % 2 != 0) Refuse("Redirection arguments must be paired");
  for (int i = 0; i < items.Count(); i += 2)
    Redirect(items[i], Handle(items[i + 1]));
}

uti_Redirection::~uti_Redirection() {
  for (Redirector& slot : m_Slots) {
    if (slot.handle.descriptor > 2) ::close(slot.handle.descriptor);
  }
}

void uti_Redirection::Redirect(const cow_String& symbol, const Handle& handle) {
  const RedirectorMap::Entry* entry = RedirectorMap::Instance().Find(symbol);
  if (entry == nullptr) Refuse("Unrecognized redirector symbol");
  struct stat status;
  if (handle.descriptor != -1) {
    // The code reported is the call's own result, not errno, as stored reports have it.
    const int result = ::fstat(handle.descriptor, &status);
    if (result != 0) NEX_THROW(uti_IOErrorException("fstat", result));
  }
  setRedirector(entry->stream, entry->append, handle);
  if (entry->mergeStderr) setRedirector(2, false, Handle(1));
}

bool uti_Redirection::IsSymbol(const cow_String& text) {
  return RedirectorMap::Instance().Find(text) != nullptr;
}

cow_String uti_Redirection::NullDevice() {
  return "/dev/null";
}

void uti_Redirection::Nullify() {
  for (Redirector& slot : m_Slots) {
    if (slot.isUndefined()) slot.handle.path = NullDevice();
  }
}

void uti_Redirection::OpenFiles() {
  bool opened[3] = {false, false, false};
  for (int stream = 0; stream < 3; ++stream) {
    Handle& handle = m_Slots[stream].handle;
    if (handle.descriptor != -1 || handle.path.IsEmpty()) continue;
    int flags = O_CLOEXEC | (stream == 0 ? O_RDONLY : O_WRONLY | O_CREAT);
    if (stream != 0) flags |= m_Slots[stream].append ? O_APPEND : O_TRUNC;
    handle.descriptor = ::open(handle.path.c_str(), flags, 0666);
    opened[stream] = handle.descriptor >= 0;
    if (opened[stream]) continue;
    const int error = errno;
    handle.descriptor = -1;
    for (int earlier = 0; earlier < stream; ++earlier) {
      if (!opened[earlier]) continue;
      ::close(m_Slots[earlier].handle.descriptor);
      m_Slots[earlier].handle.descriptor = -1;
    }
    NEX_THROW(uti_IOErrorException("open", error, handle.path));
  }
}

int uti_Redirection::ConnectStdoutPipe() {
  int ends[2];
  // The read end is the parent's; what a child prints is read as bytes, there being no text
  // mode of descriptors here.
  if (::pipe2(ends, O_CLOEXEC) != 0)
    NEX_THROW(nex_SystemErrorException(omi_SystemErrorCode(errno)));
  return ConnectPipe(1, ends[1], ends[0]);
}

int uti_Redirection::ConnectStdinPipe() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0)
    NEX_THROW(nex_SystemErrorException(omi_SystemErrorCode(errno)));
  return ConnectPipe(0, ends[0], ends[1]);
}

void uti_Redirection::setRedirector(int stream, bool append, const Handle& handle) {
  Redirector& slot = m_Slots[stream];
  if (!slot.isUndefined()) {
    NEX_THROW(nex_TextException(
        nex_Translate("Stream %s has already redirected.", kStreamNames[stream])));
  }
  slot.handle = handle;
  slot.append = append;
}

int uti_Redirection::ConnectPipe(int stream, int take, int keep) {
  try {
    setRedirector(stream, false, Handle(take));
  } catch (...) {
    ::close(take);
    ::close(keep);
    throw;
  }
  return keep;
}

void uti_Redirection::ReleaseDescriptors() {
  for (Redirector& slot : m_Slots) {
    if (slot.handle.descriptor > 2) ::close(slot.handle.descriptor);
    if (slot.handle.descriptor > 0) slot.handle.descriptor = -1;
  }
}
