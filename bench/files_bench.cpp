// Files against their peers: the multisection checksum against Boost's table CRC and ISA-L's
// folding CRC, a multisection commit against writing the same bytes once, and utl_File's
// sequential 1 MiB reads and writes against pread and pwrite. The files go to $TMPDIR (or
// /tmp) and are removed at the end.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#ifdef VRK_HAVE_BOOST_CRC
#include <boost/crc.hpp>
#endif
#ifdef VRK_HAVE_ISAL
#include <isa-l/crc.h>
#endif

#include "VRKLnuLifecycle.h"
#include "utl_Crc32.h"
#include "utl_File.h"
#include "utl_MultisectionFile.h"

namespace {

constexpr int kMiB = 1 << 20;

std::string ScratchPath(const char* name) {
  const char* directory = std::getenv("TMPDIR");
  return std::string(directory && *directory ? directory : "/tmp") + "/" + name + "." +
         std::to_string(getpid());
}

const std::vector<unsigned char>& Data(size_t size) {
  static std::vector<unsigned char> data;
  if (data.size() < size) {
    data.resize(size);
    uint32_t x = 14;
    for (unsigned char& byte : data)
      byte = static_cast<unsigned char>((x = x * 1664525 + 1013904223) >> 24);
  }
  return data;
}

template <class Crc>
void RunCrc(benchmark::State& state, Crc crc) {
  const size_t size = static_cast<size_t>(state.range(0));
  const unsigned char* data = Data(size).data();
  for (auto _ : state)
    benchmark::DoNotOptimize(crc(data, size));
  state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(size));
}

void CrcTable_utl_Crc32(benchmark::State& state) {
  RunCrc(state, [](const unsigned char* p, size_t n) {
    return utl_Crc32::UpdatePortable(utl_Crc32::kInitial, p, n);
  });
}

#ifdef VRK_HAVE_BOOST_CRC
void CrcTable_boost_crc_optimal(benchmark::State& state) {
  RunCrc(state, [](const unsigned char* p, size_t n) {
    boost::crc_optimal<32, 0x04C11DB7, 0xFFFFFFFF, 0, false, false> crc;
    crc.process_bytes(p, n);
    return crc.checksum();
  });
}
#endif

void CrcClmul_utl_Crc32(benchmark::State& state) {
  if (!utl_Crc32::HasCarrylessMultiply()) state.SkipWithError("no carry-less multiplication");
  RunCrc(state, [](const unsigned char* p, size_t n) {
    return utl_Crc32::Update(utl_Crc32::kInitial, p, n);
  });
}

#ifdef VRK_HAVE_ISAL
// The complement on both sides makes ISA-L's CRC-32 with its final inversion the same checksum.
void CrcClmul_isal_crc32_ieee(benchmark::State& state) {
  RunCrc(state, [](const unsigned char* p, size_t n) { return ~crc32_ieee(0, p, n); });
}
#endif

// A 256 MiB multisection file of 16 sections of 16 MiB and one small one, which each commit
// replaces; the peer writes the same number of bytes once.
constexpr int kSections = 16;
constexpr int kSectionSize = 16 * kMiB;
constexpr int64_t kCommitBytes = int64_t{kSections} * kSectionSize;

// The resident set's high-water mark since the last reset, and the reset, in kB.
long ResidentKb(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line))
    if (line.compare(0, std::strlen(field), field) == 0)
      return std::atol(line.c_str() + std::strlen(field));
  return -1;
}
void ResetPeakResident() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

void Commit_saveChanges(benchmark::State& state) {
  const std::string path = ScratchPath("commit_bench.msf");
  const char* data = reinterpret_cast<const char*>(Data(kSectionSize).data());
  {
    utl_MultisectionFile file(path.c_str(), utl_AccessWrite);
    for (int i = 0; i < kSections; ++i)
      file.setSectionData(("s" + std::to_string(i)).c_str(), data, kSectionSize);
    file.setSectionData("small", data, 4096);
    file.saveChanges();
  }
  utl_MultisectionFile file(path.c_str(), utl_AccessUpdate);
  long peakKb = 0;
  for (auto _ : state) {
    file.setSectionData("small", data + state.iterations() % 1024, 4096);
    const long before = ResidentKb("VmRSS:");
    ResetPeakResident();
    file.saveChanges();
    peakKb = std::max(peakKb, ResidentKb("VmHWM:") - before);
  }
  state.counters["peak_MiB"] = double(peakKb) / 1024;
  state.SetBytesProcessed(int64_t(state.iterations()) * kCommitBytes);
  std::remove(path.c_str());
}

// The same bytes written once, with and without taking them to the disk as the commit does
// with its temporary.
void WriteOnce(benchmark::State& state, bool toDisk) {
  const std::string path = ScratchPath("commit_bench.raw");
  const char* data = reinterpret_cast<const char*>(Data(kSectionSize).data());
  for (auto _ : state) {
    const int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    for (int i = 0; i < kSections; ++i)
      if (write(fd, data, kSectionSize) != kSectionSize) state.SkipWithError("write failed");
    if (toDisk) fsync(fd);
    close(fd);
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * kCommitBytes);
  std::remove(path.c_str());
}

void Commit_write_fsync(benchmark::State& state) {
  WriteOnce(state, true);
}

void Commit_write(benchmark::State& state) {
  WriteOnce(state, false);
}

// Sequential 1 MiB transfers over a 64 MiB file in the page cache, starting over at its end.
constexpr int64_t kSequentialFile = 64 * kMiB;

std::string SequentialFile() {
  const std::string path = ScratchPath("sequential_bench");
  utl_File file(path.c_str(), utl_AccessWrite, utl_ShareDefault);
  const char* data = reinterpret_cast<const char*>(Data(kMiB).data());
  for (int64_t at = 0; at < kSequentialFile; at += kMiB)
    file.Write(data, kMiB);
  return path;
}

template <class Transfer>
void RunSequential(benchmark::State& state, Transfer transfer) {
  int64_t at = 0;
  for (auto _ : state) {
    transfer(at);
    at = at + kMiB == kSequentialFile ? 0 : at + kMiB;
  }
  state.SetBytesProcessed(int64_t(state.iterations()) * kMiB);
}

void SeqRead_utl_File(benchmark::State& state) {
  const std::string path = SequentialFile();
  std::vector<char> buffer(kMiB);
  utl_File file(path.c_str(), utl_AccessRead, utl_ShareDefault);
  RunSequential(state, [&](int64_t at) {
    if (at == 0) file.Seek(0);
    benchmark::DoNotOptimize(file.Read(buffer.data(), kMiB));
  });
  std::remove(path.c_str());
}

void SeqRead_pread(benchmark::State& state) {
  const std::string path = SequentialFile();
  std::vector<char> buffer(kMiB);
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  RunSequential(state,
                [&](int64_t at) { benchmark::DoNotOptimize(pread(fd, buffer.data(), kMiB, at)); });
  close(fd);
  std::remove(path.c_str());
}

void SeqWrite_utl_File(benchmark::State& state) {
  const std::string path = SequentialFile();
  const char* data = reinterpret_cast<const char*>(Data(kMiB).data());
  utl_File file(path.c_str(), utl_AccessUpdate, utl_ShareDefault);
  RunSequential(state, [&](int64_t at) {
    if (at == 0) file.Seek(0);
    benchmark::DoNotOptimize(file.Write(data, kMiB));
  });
  std::remove(path.c_str());
}

void SeqWrite_pwrite(benchmark::State& state) {
  const std::string path = SequentialFile();
  const char* data = reinterpret_cast<const char*>(Data(kMiB).data());
  const int fd = open(path.c_str(), O_RDWR | O_CLOEXEC);
  RunSequential(state, [&](int64_t at) { benchmark::DoNotOptimize(pwrite(fd, data, kMiB, at)); });
  close(fd);
  std::remove(path.c_str());
}

}  // namespace

BENCHMARK(CrcTable_utl_Crc32)->Arg(256 << 10)->Arg(64 << 20);
#ifdef VRK_HAVE_BOOST_CRC
BENCHMARK(CrcTable_boost_crc_optimal)->Arg(256 << 10)->Arg(64 << 20);
#endif
BENCHMARK(CrcClmul_utl_Crc32)->Arg(256 << 10)->Arg(64 << 20);
#ifdef VRK_HAVE_ISAL
BENCHMARK(CrcClmul_isal_crc32_ieee)->Arg(256 << 10)->Arg(64 << 20);
#endif
BENCHMARK(Commit_saveChanges)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Commit_write_fsync)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Commit_write)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SeqRead_utl_File)->UseRealTime();
BENCHMARK(SeqRead_pread)->UseRealTime();
BENCHMARK(SeqWrite_utl_File)->UseRealTime();
BENCHMARK(SeqWrite_pwrite)->UseRealTime();

int main(int argc, char** argv) {
  int tally = 0;
  VRKLnuBasicUtils_initialize(tally);
#ifndef VRK_HAVE_BOOST_CRC
  std::fprintf(stderr, "libboost-dev not found: the Boost CRC comparison is skipped\n");
#endif
#ifndef VRK_HAVE_ISAL
  std::fprintf(stderr, "libisal-dev not found: the ISA-L CRC comparison is skipped\n");
#endif
  // Every side must give the check value of the checksum before it is timed.
  const unsigned char* check = reinterpret_cast<const unsigned char*>("123456789");
  if (utl_Crc32::Update(utl_Crc32::kInitial, check, 9) != 0x0376E6E7) return 1;
#ifdef VRK_HAVE_BOOST_CRC
  boost::crc_optimal<32, 0x04C11DB7, 0xFFFFFFFF, 0, false, false> boostCrc;
  boostCrc.process_bytes(check, 9);
  if (boostCrc.checksum() != 0x0376E6E7) return 1;
#endif
#ifdef VRK_HAVE_ISAL
  if (~crc32_ieee(0, check, 9) != 0x0376E6E7) return 1;
#endif
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  VRKLnuBasicUtils_finalize(tally);
}
