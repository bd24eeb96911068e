#include "omi_Singleton.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

int attempts = 0;

// Fails to construct the first time.
class Flaky : public omi_Singleton<Flaky> {
 public:
  int Attempt() const { return m_Attempt; }

 private:
  friend class omi_SingletonBase<Flaky>;
  Flaky() : m_Attempt(++attempts) {
    if (m_Attempt == 1) throw std::runtime_error("first");
  }
  ~Flaky() = default;

  int m_Attempt;
};

TEST(PlainSingletonTest, AFailedConstructorLeavesNoObjectAndTheNextInstanceMakesAnew) {
  EXPECT_THROW(Flaky::Instance(), std::runtime_error);
  EXPECT_EQ(Flaky::Instance().Attempt(), 2);
  EXPECT_EQ(&Flaky::Instance(), &Flaky::Instance());
  Flaky::Finalize();
  EXPECT_EQ(Flaky::Instance().Attempt(), 3);
  Flaky::Finalize();
}

}  // namespace
