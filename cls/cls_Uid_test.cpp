#include "cls_Uid.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>
#include <vector>

#include "VRKTestLibrary.h"
#include "cls_HistoryEntry.h"
#include "cls_Static.h"
#include "cls_UidCatalog.h"

namespace {

class UidTest : public VRKLibraryTest {};

TEST_F(UidTest, CopiesShareOneIdentityAndNewUidLeavesIt) {
  cls_Uid a;
  cls_Uid b = a;
  cls_Uid c;
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a == c);
  EXPECT_EQ(a.UseCount(), 2);
  b.NewUid();
  EXPECT_FALSE(a == b);
  EXPECT_EQ(a.UseCount(), 1);
  c = a;
  EXPECT_TRUE(c == a);
  const cls_Uid& same = c;
  c = same;  // assignment to itself keeps the count
  EXPECT_EQ(a.UseCount(), 2);
}

// AllocateUid takes a fresh entry as construction does; the caller gives it back to its
// catalogue, which hands it out again first.
TEST_F(UidTest, AllocateUidTakesAFreshEntry) {
  cls_UidCatalogEntry* entry = cls_Uid::AllocateUid();
  EXPECT_EQ(entry->m_RefCount, 1);
  EXPECT_EQ(entry->m_History, nullptr);
  cls_UidCatalog::Release(entry);
  EXPECT_EQ(cls_Uid::AllocateUid(), entry);
  cls_UidCatalog::Release(entry);
}

TEST_F(UidTest, EachThreadHasItsCatalogueInBlocksOf2048AndItsConstants) {
  const cls_Static& mine = cls_Static::Instance();
  EXPECT_EQ(&cls_Static::Instance(), &mine);
  const cls_Static* theirs = nullptr;
  // A fresh thread's catalogue starts from nothing.
  std::thread([&] {
    std::vector<cls_Uid> uids(cls_UidCatalog::kBlockEntries);
    EXPECT_EQ(cls_UidCatalog::Instance().BlockCount(), 1);
    uids.emplace_back();
    EXPECT_EQ(cls_UidCatalog::Instance().BlockCount(), 2);
    uids.clear();
    std::vector<cls_Uid> again(2 * cls_UidCatalog::kBlockEntries);
    EXPECT_EQ(cls_UidCatalog::Instance().BlockCount(), 2);
    again.clear();
    theirs = &cls_Static::Instance();
    cls_Static::Finalize();
    cls_UidCatalog::Finalize();
  }).join();
  EXPECT_NE(theirs, &mine);
}

// Uids given back on another thread return to the catalogue they came from, which takes
// them again before it makes a new block; a uid carried off a thread that then ends stays
// whole, and the thread's blocks leave with the last such uid.
TEST_F(UidTest, UidsGoBackToTheirCatalogueAndOutliveItsThread) {
  const cls_Uid mine;
  const unsigned long footprint = mem_Footprint();
  std::optional<cls_Uid> carried;
  std::thread([&] {
    std::vector<cls_Uid> uids(cls_UidCatalog::kBlockEntries - 1);
    carried.emplace();  // the first block is full
    std::thread([&] { uids.clear(); }).join();
    const cls_Uid next;
    EXPECT_EQ(cls_UidCatalog::Instance().BlockCount(), 1);
    cls_UidCatalog::Finalize();
  }).join();
  cls_Uid copy = *carried;
  EXPECT_EQ(copy.UseCount(), 2);
  EXPECT_NE(copy, mine);
  carried.reset();
  copy.NewUid();
  EXPECT_EQ(mem_Footprint(), footprint);
}

class Revision : public cls_HistoryEntry {
 public:
  Revision(cls_Uid& uid, int* deleted) : m_Deleted(deleted) {
    if (uid.GetHistory() != nullptr) {
      Link(uid.GetHistory());
    } else {
      uid.SetHistory(this);
    }
  }
  ~Revision() override { ++*m_Deleted; }

 private:
  int* m_Deleted;
};

TEST_F(UidTest, HistoryRingGoesWithTheLastCopyOfTheIdentityAndSurvivesLosingAnEntry) {
  int deleted = 0;
  cls_Uid* uid = new cls_Uid;
  cls_Uid copy = *uid;
  Revision* first = new Revision(*uid, &deleted);
  Revision* middle = new Revision(*uid, &deleted);
  new Revision(copy, &deleted);
  EXPECT_EQ(first->Next()->Next()->Next(), first);
  EXPECT_EQ(first->Previous()->Previous()->Previous(), first);
  delete middle;  // as its store does: the ring closes over the gap
  EXPECT_EQ(first->Next()->Next(), first);
  EXPECT_EQ(first->Previous()->Previous(), first);
  EXPECT_EQ(deleted, 1);
  delete uid;
  EXPECT_EQ(deleted, 1);
  copy.NewUid();
  EXPECT_EQ(deleted, 3);
}

}  // namespace
