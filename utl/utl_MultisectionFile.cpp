#include "utl_MultisectionFile.h"

#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "nex_TextException.h"
#include "utl_Crc32.h"
#include "utl_FileException.h"

namespace {

constexpr char kMagic[4] = {'\x28', '\xC1', '\x1D', '\xAF'};
constexpr int kVersion = 1;
constexpr int kLockAttempts = 10;
constexpr int kLockSleepMilliseconds = 10;
// The most a commit or a section read moves at once.
constexpr int kChunk = 1 << 20;
// A directory entry without its name: name length, body length, checksum.
constexpr int kEntryBytes = 12;

[[noreturn]] void Fail(const cow_String& file, const atr_String& reason, int line) {
  nex_TextException(nex_Translate("\"%s\": %s", file, reason))
      .Throw(nex_SourceName(__FILE__).c_str(), line);
}

// A block of the memory layer, freed at scope exit.
class Block {
 public:
  explicit Block(size_t size) : m_Data(static_cast<char*>(mem_OperatorNewThrow(size))) {}
  ~Block() { mem_Free(m_Data); }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;
  char* Data() const { return m_Data; }
  // Gives up the block.
  char* Release() {
    char* data = m_Data;
    m_Data = nullptr;
    return data;
  }

 private:
  char* m_Data;
};

// Integers are little-endian whatever the host.
void EncodeInt(uint32_t value, char* out) {
  for (int i = 0; i < 4; ++i)
    out[i] = static_cast<char>(value >> (8 * i));
}
uint32_t DecodeInt(const char* in) {
  uint32_t value = 0;
  for (int i = 0; i < 4; ++i)
    value |= uint32_t{static_cast<unsigned char>(in[i])} << (8 * i);
  return value;
}

// Reads the directory from the start of the file through a buffer, knowing where the file
// ends, so that nothing is read or allocated past it.
class DirectoryReader {
 public:
  explicit DirectoryReader(utl_File& file)
      : m_File(file), m_Left(file.FileSize().Value()), m_Buffer(kBuffer) {
    file.Seek(0);
  }

  // The next `count` bytes, zero-filled where the file ends first; false then.
  bool Take(char* out, int64_t count) {
    while (count > 0) {
      if (m_Next == m_End && !Refill()) {
        std::memset(out, 0, static_cast<size_t>(count));
        return false;
      }
      const int64_t n = std::min<int64_t>(count, m_End - m_Next);
      std::memcpy(out, m_Buffer.Data() + m_Next, static_cast<size_t>(n));
      m_Next += static_cast<int>(n);
      out += n;
      count -= n;
    }
    return true;
  }
  int32_t TakeInt() {
    char bytes[4];
    if (!Take(bytes, 4)) Truncated(__LINE__);
    return static_cast<int32_t>(DecodeInt(bytes));
  }
  [[noreturn]] void Truncated(int line) const {
    Fail(m_File.Name(), nex_Translate("Truncated file"), line);
  }
  // Bytes of the file not taken yet.
  int64_t Left() const { return m_Left + (m_End - m_Next); }
  int64_t Position() const { return m_Taken - (m_End - m_Next); }

 private:
  static constexpr int kBuffer = 64 * 1024;

  bool Refill() {
    const int got = m_Left <= 0 ? 0
                                : m_File.Read(m_Buffer.Data(),
                                              static_cast<int>(std::min<int64_t>(m_Left, kBuffer)));
    m_Left -= got;
    m_Taken += got;
    m_Next = 0;
    m_End = got;
    return got > 0;
  }

  utl_File& m_File;
  int64_t m_Left;  // in the file, past the buffer
  int64_t m_Taken = 0;
  Block m_Buffer;
  int m_Next = 0;
  int m_End = 0;
};

// Writes through a buffer of one chunk, and fails with the full-disk error on a short write.
class ChunkWriter {
 public:
  ChunkWriter(utl_File& file, char* buffer) : m_File(file), m_Buffer(buffer) {}

  void Put(const char* data, int64_t size) {
    if (size >= kChunk) {
      Drain();
      WriteAll(data, size);
      return;
    }
    if (m_Used + size > kChunk) Drain();
    std::memcpy(m_Buffer + m_Used, data, static_cast<size_t>(size));
    m_Used += static_cast<int>(size);
  }
  void PutInt(uint32_t value) {
    char bytes[4];
    EncodeInt(value, bytes);
    Put(bytes, 4);
  }
  // Moves `size` bytes from `from`'s position; where `from` ends, zero bytes take their place.
  void CopyFrom(utl_File& from, int64_t size) {
    Drain();
    while (size > 0) {
      const int n = static_cast<int>(std::min<int64_t>(size, kChunk));
      from.Read(m_Buffer, n);
      WriteAll(m_Buffer, n);
      size -= n;
    }
  }
  void Drain() {
    WriteAll(m_Buffer, m_Used);
    m_Used = 0;
  }
  int64_t Position() const { return m_Written + m_Used; }

 private:
  void WriteAll(const char* data, int64_t size) {
    for (; size > 0; data += kChunk, size -= kChunk) {
      const int n = static_cast<int>(std::min<int64_t>(size, kChunk));
      if (m_File.Write(data, n) != n) NEX_THROW(utl_FileExceptionFull(m_File.Name()));
      m_Written += n;
    }
  }

  utl_File& m_File;
  char* m_Buffer;
  int m_Used = 0;
  int64_t m_Written = 0;
};

// Deletes the temporary of a commit when the commit ends, failed or not.
class TemporaryGuard {
 public:
  explicit TemporaryGuard(const cow_String& name) : m_Name(name) {}
  ~TemporaryGuard() { ::unlink(m_Name.c_str()); }
  TemporaryGuard(const TemporaryGuard&) = delete;
  TemporaryGuard& operator=(const TemporaryGuard&) = delete;

 private:
  cow_String m_Name;
};

}  // namespace

utl_MultisectionFile::utl_MultisectionFile(const cow_String& name, utl_FileAccess access)
    : utl_File(name, access, utl_ShareDefault), m_Lock(name + ".lock") {
  if (access != utl_AccessRead && !m_Lock.acquire(kLockAttempts, kLockSleepMilliseconds))
    Fail(name, nex_Translate("Cannot create the lock file."), __LINE__);
  if (access != utl_AccessWrite) Load();
}

utl_MultisectionFile::~utl_MultisectionFile() = default;

int utl_MultisectionFile::Find(const cow_String& name) const {
  for (int i = 0; i < m_Sections.Count(); ++i)
    if (std::strcmp(m_Sections.UncheckedConstGet(i).m_Name.c_str(), name.c_str()) == 0) return i;
  return -1;
}

void utl_MultisectionFile::Load() {
  DirectoryReader in(*this);
  char magic[sizeof kMagic];
  in.Take(magic, sizeof magic);
  if (std::memcmp(magic, kMagic, sizeof kMagic) != 0)
    Fail(Name(), nex_Translate("Invalid file type"), __LINE__);
  if (in.TakeInt() != kVersion) Fail(Name(), nex_Translate("Unsupported file format"), __LINE__);
  const int32_t count = in.TakeInt();
  if (count > in.Left() / kEntryBytes) in.Truncated(__LINE__);
  for (int32_t i = 0; i < count; ++i) {
    utl_FileSection section;
    const int32_t nameLength = in.TakeInt();
    if (nameLength < 0) Fail(Name(), nex_Translate("Invalid string length"), __LINE__);
    if (nameLength > in.Left()) in.Truncated(__LINE__);
    if (nameLength > 0) {
      // The name ends at its first zero byte, if it has one.
      Block text(static_cast<size_t>(nameLength) + 1);
      in.Take(text.Data(), nameLength);
      text.Data()[nameLength] = '\0';
      const int length = static_cast<int>(std::strlen(text.Data()));
      section.m_Name = cow_String(text.Release(), length, cow_String::Adopt);
    }
    section.m_Length = in.TakeInt();
    section.m_Checksum = static_cast<uint32_t>(in.TakeInt());
    if (section.m_Length < 0) Fail(Name(), nex_Translate("Invalid section length"), __LINE__);
    m_Sections.Append(section);
  }
  // The bodies follow the directory, one after another, and must lie inside the file.
  int64_t offset = in.Position();
  for (int i = 0; i < m_Sections.Count(); ++i) {
    utl_FileSection& section = m_Sections.UncheckedGet(i);
    section.m_Offset = static_cast<uint32_t>(offset);
    offset += section.m_Length;
  }
  if (offset > in.Position() + in.Left() || offset > INT_MAX) in.Truncated(__LINE__);
}

bool utl_MultisectionFile::hasSection(const cow_String& name) const {
  return Find(name) >= 0;
}

int utl_MultisectionFile::getSectionLength(const cow_String& name) const {
  return m_Sections.ConstGet(Find(name)).CurrentLength();
}

void utl_MultisectionFile::getSectionData(const cow_String& name, void* destination) {
  const utl_FileSection& section = m_Sections.ConstGet(Find(name));
  char* out = static_cast<char*>(destination);
  if (section.m_HasPending) {
    if (section.m_Pending.Length() > 0)
      std::memcpy(out, section.m_Pending.c_str(), static_cast<size_t>(section.m_Pending.Length()));
    return;
  }
  Seek(utl_FileOffset(section.m_Offset));
  // Read and summed a chunk at a time, while the chunk is in the cache. A body cut short by
  // the end of the file reads as zero bytes and fails the test.
  uint32_t crc = utl_Crc32::kInitial;
  for (int done = 0; done < section.m_Length;) {
    const int n = std::min(section.m_Length - done, kChunk);
    Read(out + done, n);
    crc = utl_Crc32::Update(crc, out + done, static_cast<size_t>(n));
    done += n;
  }
  if (crc != section.m_Checksum)
    Fail(Name(), nex_Translate("Data corrupted in section \"%s\"", section.m_Name), __LINE__);
}

void utl_MultisectionFile::setSectionData(const cow_String& name, const void* data, int length) {
  if (length < 0) Fail(Name(), nex_Translate("Invalid section length"), __LINE__);
  const cow_String body =
      length == 0 ? cow_String() : cow_String(static_cast<const char*>(data), length);
  int index = Find(name);
  if (index < 0) {
    utl_FileSection added;
    added.m_Name = name;
    m_Sections.Append(added);
    index = m_Sections.Count() - 1;
  }
  utl_FileSection& section = m_Sections.Get(index);
  section.m_Pending = body;
  section.m_HasPending = true;
  section.m_Checksum =
      utl_Crc32::Update(utl_Crc32::kInitial, body.c_str(), static_cast<size_t>(length));
}

void utl_MultisectionFile::removeSection(const cow_String& name) {
  m_Sections.RemoveIndex(Find(name));
}

// The new offsets are kept apart and the staged bodies kept until the file has been written,
// so that a commit that fails before changes nothing in memory.
void utl_MultisectionFile::saveChanges() {
  const cow_String temporaryName = Name() + "." + cow_String(static_cast<int>(getpid())) + ".tmp";
  TemporaryGuard guard(temporaryName);
  utl_File temporary(temporaryName, utl_AccessWrite, utl_ShareAll);
  const int count = m_Sections.Count();
  Block buffer(kChunk);
  Block offsets(sizeof(uint32_t) * static_cast<size_t>(count) + 1);
  uint32_t* newOffsets = reinterpret_cast<uint32_t*>(offsets.Data());

  ChunkWriter out(temporary, buffer.Data());
  out.Put(kMagic, sizeof kMagic);
  out.PutInt(kVersion);
  out.PutInt(static_cast<uint32_t>(count));
  for (int i = 0; i < count; ++i) {
    const utl_FileSection& section = m_Sections.UncheckedConstGet(i);
    out.PutInt(static_cast<uint32_t>(section.m_Name.Length()));
    out.Put(section.m_Name.c_str(), section.m_Name.Length());
    out.PutInt(static_cast<uint32_t>(section.CurrentLength()));
    out.PutInt(section.m_Checksum);
  }
  for (int i = 0; i < count; ++i) {
    const utl_FileSection& section = m_Sections.UncheckedConstGet(i);
    newOffsets[i] = static_cast<uint32_t>(out.Position());
    if (section.m_HasPending) {
      out.Put(section.m_Pending.c_str(), section.m_Pending.Length());
    } else if (section.m_Length > 0) {
      Seek(utl_FileOffset(section.m_Offset));
      out.CopyFrom(*this, section.m_Length);
    }
  }
  out.Drain();
  temporary.Flush();
  const int64_t size = temporary.FileSize().Value();

  // The size's low 32 bits, sign-extended, as the format counts sizes.
  Extend(utl_FileOffset(static_cast<int32_t>(static_cast<uint32_t>(size))));
  Seek(utl_FileOffset(0));
  temporary.Seek(utl_FileOffset(0));
  ChunkWriter(*this, buffer.Data()).CopyFrom(temporary, size);

  for (int i = 0; i < count; ++i) {
    utl_FileSection& section = m_Sections.UncheckedGet(i);
    section.m_Offset = newOffsets[i];
    if (!section.m_HasPending) continue;
    section.m_Length = section.m_Pending.Length();
    section.m_Pending = cow_String();
    section.m_HasPending = false;
  }
}
