// The three models through which the lower layers reach the library above them.
#include <gtest/gtest.h>

#include <cstring>

#include "VRKBasAtiThreadingModel.h"
#include "VRKBasExceptionModel.h"
#include "VRKBasUtlExceptionModel.h"
#include "omi_FatalError.h"

namespace {

struct PatternRaised {
  int offset;
};

class TestFactory : public VRKBasExceptionFactory {
 public:
  void RaisePatternError(int offset, const char*) override { throw PatternRaised{offset}; }
  void RaiseExecError(int) override {}  // returns: the model must still raise
};

TEST(ExceptionModelTest, RaisesThroughTheFactoryOrAsFatalError) {
  EXPECT_EQ(VRKBasExceptionModel::getBehavior(), nullptr);
  try {
    VRKBasExceptionModel::RaisePatternError(4, "missing )");
  } catch (const omi_FatalError& error) {
    EXPECT_STREQ(error.Text(), "regular expression error at offset 4: missing )");
    EXPECT_NE(error.Errno(), 0);
  }

  TestFactory factory;
  EXPECT_TRUE(VRKBasExceptionModel::setBehavior(&factory));
  EXPECT_EQ(VRKBasExceptionModel::getBehavior(), &factory);
  try {
    VRKBasExceptionModel::RaisePatternError(9, "x");
    ADD_FAILURE() << "returned";
  } catch (const PatternRaised& raised) {
    EXPECT_EQ(raised.offset, 9);
  }
  EXPECT_THROW(VRKBasExceptionModel::RaiseExecError(3), omi_FatalError);
  VRKBasExceptionModel::setBehavior(nullptr);
}

TEST(ExceptionModelTest, SharedLayerRaisesSystemErrorsWithTheirText) {
  try {
    VRKBasUtlExceptionModel::RaiseSystemError(cow_SystemErrorCode(ENOENT));
    ADD_FAILURE() << "returned";
  } catch (const omi_FatalError& error) {
    EXPECT_STREQ(error.Text(), "No such file or directory");
    EXPECT_EQ(error.Errno(), ENOENT);
  }
}

class SingleThreadFactory : public VRKBasAtiThreadFactory {
 public:
  VRKBasAtiAtomicTemplate<int>* NewAtomic(int value) override {
    return new VRKBasAtiAtomicTemplate<int>(value);
  }
  VRKBasAtiMutex* NewMutex() override { return nullptr; }
  VRKBasAtiCondVar* NewCondVar() override { return nullptr; }
  VRKBasAtiBarrier* NewBarrier() override { return nullptr; }
  void MemoryBarrier() override {}
  void WriteMemoryBarrier() override {}
  void ReadMemoryBarrier() override {}
  VRKBasAtiMutex* NewLockedMutex() override { return nullptr; }
  VRKBasAtiCondVar* NewLockedCondVar() override { return nullptr; }
  VRKBasAtiAtomicTemplate<double>* NewAtomicDouble(double value) override {
    return new VRKBasAtiAtomicTemplate<double>(value);
  }
  VRKBasAtiAtomicTemplate<unsigned long long>* NewAtomicUInt64(unsigned long long v) override {
    return new VRKBasAtiAtomicTemplate<unsigned long long>(v);
  }
  VRKBasAtiMutex* ConstructMutex(void*) override { return nullptr; }
  VRKBasAtiCondVar* ConstructCondVar(void*) override { return nullptr; }
  VRKBasAtiBarrier* ConstructBarrier(void*) override { return nullptr; }
  int ThreadingKind() const override { return 1; }
};

TEST(ThreadingModelTest, HoldsTheFactoryAndItsDefaults) {
  VRKBasAtiThreadFactory* before = VRKBasAtiThreadingModel::getBehavior();
  SingleThreadFactory factory;
  EXPECT_TRUE(VRKBasAtiThreadingModel::setBehavior(&factory));
  VRKBasAtiThreadFactory* installed = VRKBasAtiThreadingModel::getBehavior();
  ASSERT_EQ(installed, &factory);

  char* name = installed->AsString();
  EXPECT_STREQ(name, "SINGLE_THREADED");
  mem_Free(name);
  installed->UpgradeAllIssuedPrimitives();

  VRKBasAtiAtomicTemplate<int>* counter = installed->NewAtomic(5);
  EXPECT_EQ((*counter)++, 6);  // every operation gives the new value, postfix too
  EXPECT_EQ(--(*counter), 5);
  EXPECT_EQ(*counter += 10, 15);
  *counter = 2;
  EXPECT_EQ(counter->Read(), 2);
  delete counter;
  VRKBasAtiAtomicTemplate<double>* sum = installed->NewAtomicDouble(0.5);
  EXPECT_EQ(sum->Add(0.25), 0.75);
  delete sum;
  VRKBasAtiThreadingModel::setBehavior(before);
}

}  // namespace
