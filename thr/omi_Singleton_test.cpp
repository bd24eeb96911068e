#include "omi_Singleton.h"

#include <gtest/gtest.h>

namespace {

int made = 0;
int destroyed = 0;

class Catalog : public omi_Singleton<Catalog> {
 public:
  int Serial() const { return m_Serial; }

 private:
  friend class omi_Singleton<Catalog>;
  friend class omi_SingletonBase<Catalog>;
  Catalog() : m_Serial(++made) {}
  ~Catalog() { ++destroyed; }

  int m_Serial;
};

TEST(SingletonTest, LivesUntilFinalizeAndIsMadeAnewAfter) {
  Catalog& first = Catalog::Instance();
  EXPECT_EQ(&Catalog::Instance(), &first);
  EXPECT_EQ(first.Serial(), 1);
  Catalog::Finalize();
  EXPECT_EQ(destroyed, 1);
  Catalog::Finalize();  // none left: nothing happens
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(Catalog::Instance().Serial(), 2);
  Catalog::Finalize();
}

}  // namespace
