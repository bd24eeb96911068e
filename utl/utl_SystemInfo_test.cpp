#include "utl_SystemInfo.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <regex>
#include <string>

#include "mem_Alloc.h"

namespace {

TEST(UtlSystemInfo, QueriesGiveTheSystemsAnswersInTheirFormats) {
  char host[256] = {};
  gethostname(host, sizeof host - 1);
  EXPECT_EQ(utl_getHostName(), host);
  EXPECT_FALSE(utl_getUserName().IsEmpty());
  EXPECT_TRUE(
      std::regex_match(utl_getDate().c_str(), std::regex("[0-3][0-9]-[A-Z][a-z]{2}-[0-9]{4}")))
      << utl_getDate().c_str();
  EXPECT_TRUE(
      std::regex_match(utl_getTime().c_str(), std::regex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9]")))
      << utl_getTime().c_str();
  EXPECT_GE(utl_getNumberCpus(), 1);
  EXPECT_GE(utl_getCpusClockSpeed(), 0);
}

TEST(UtlSystemInfo, MemoryEntryPointsSetAndPrintTheLayersLimit) {
  const unsigned long before = mem_MemoryLimit();
  char text[21];
  ASSERT_TRUE(utl_SetMemoryLimit(4000000000u));
  EXPECT_STREQ(utl_GetMemoryLimit(text), "4000000000");
  void* block = mem_OperatorNewThrow(1000);
  EXPECT_EQ(utl_GetMemoryFootprint(text), text);
  EXPECT_EQ(text, std::to_string(mem_Footprint()));
  EXPECT_GE(std::stoul(text), 1000u);
  mem_Free(block);
  mem_Mallopt(-5, before);
}

}  // namespace
