#include "sto_Transfer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "VRKTestChild.h"
#include "VRKTestLibrary.h"
#include "sto_TestSamples.h"
#include "uti_IOErrorException.h"

namespace {

class TransferTest : public VRKLibraryTest {};

// A pipe holding `bytes` and then its end: the read end, which the caller closes.
int PipeWith(const std::string& bytes) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  EXPECT_EQ(write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  close(ends[1]);
  return ends[0];
}

// What sto_WriteBytes puts on a descriptor.
std::string Framed(const cow_String& bytes) {
  int ends[2];
  EXPECT_EQ(pipe(ends), 0);
  sto_WriteBytes(ends[1], bytes);
  close(ends[1]);
  std::string framed(static_cast<size_t>(bytes.Length()) + 4, '\0');
  EXPECT_EQ(read(ends[0], &framed[0], framed.size()), static_cast<ssize_t>(framed.size()));
  close(ends[0]);
  return framed;
}

TEST_F(TransferTest, EveryPersistentClassRoundTripsThroughAPipeToAChild) {
  if (VRKChildRole() == "check") {
    std::string failures;
    for (const VRKStoreSample& sample : VRKStoreSamples())
      if (sample.reencode(sto_ReadBytes(0)) != sample.encode()) failures += sample.name;
    std::fputs(failures.c_str(), stderr);
    VRKChildExit(failures.empty() ? 0 : 1);
  }
  VRKChild child("check");
  for (const VRKStoreSample& sample : VRKStoreSamples())
    child.input += Framed(sample.encode());
  const VRKChildResult result = child.Run();
  EXPECT_EQ(result.exitCode, 0) << result.err;
}

TEST_F(TransferTest, AnErrorRaisedInAChildIsRaisedAgainInTheParentWithItsClassAndPlace) {
  if (VRKChildRole() == "fail") {
    try {
      uti_IOErrorException error("open", 2, "mesh.inp");
      NEX_THROW(error);
    } catch (const nex_Exception& error) {
      std::fputs(error.DeveloperReport().c_str(), stderr);
      sto_WriteException(1, error);
    }
    VRKChildExit(0);
  }
  const VRKChildResult result = VRKChild("fail").Run();
  ASSERT_EQ(result.exitCode, 0) << result.err;
  const int pipe = PipeWith(VRKChildOutput(result.out));
  try {
    sto_RaiseException(pipe);
    ADD_FAILURE() << "nothing was raised";
  } catch (const uti_IOErrorException& error) {
    EXPECT_EQ(std::string(error.DeveloperReport().c_str()), VRKChildOutput(result.err));
    EXPECT_EQ(std::string(error.FromFile().c_str()), "sto_Transfer_test");
    EXPECT_GT(error.FromLine(), 0);
  }
  close(pipe);
}

TEST_F(TransferTest, InputThatEndsTooSoonRaisesWithoutTakingWhatItClaims) {
  const std::string cases[] = {"", std::string("\x05\0\0\0ab", 6),
                               std::string("\xff\xff\xff\x3f", 4), Framed("not a graph")};
  for (const std::string& input : cases) {
    const int pipe = PipeWith(input);
    EXPECT_THROW(sto_RaiseException(pipe), nex_Exception) << input.size();
    close(pipe);
  }
}

}  // namespace
