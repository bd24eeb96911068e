#include "cow_List.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <random>
#include <set>
#include <type_traits>
#include <vector>

#include "VRKBasSharedContainers.h"
#include "VRKTestLibrary.h"
#include "cow_ListIter.h"
#include "mem_Alloc.h"

namespace {

// An element with a virtual destructor that checks that every object is constructed once and
// destroyed once at its address, and that copies and assignments touch only live objects.
class Tracked : public mem_AllocationOperators {
 public:
  Tracked(int value = 0) : m_Value(value) { Enter(); }
  Tracked(const Tracked& other) : m_Value(other.m_Value) {
    other.ExpectLive();
    if (copiesBeforeFailure > 0 && --copiesBeforeFailure == 0) throw 0;
    Enter();
  }
  Tracked& operator=(const Tracked& other) {
    ExpectLive();
    other.ExpectLive();
    m_Value = other.m_Value;
    return *this;
  }
  virtual ~Tracked() { EXPECT_EQ(Live().erase(this), 1u) << "destroyed twice or never built"; }
  bool operator==(const Tracked& other) const { return m_Value == other.m_Value; }

  static std::set<const Tracked*>& Live() {
    static std::set<const Tracked*> live;
    return live;
  }
  // When set above 0, the copy that brings it to 0 throws.
  static inline int copiesBeforeFailure = 0;

 private:
  void Enter() { EXPECT_TRUE(Live().insert(this).second) << "built twice"; }
  void ExpectLive() const { EXPECT_EQ(Live().count(this), 1u) << "used while not alive"; }

  int m_Value;
};

template <class T>
T Make(int value) {
  if constexpr (std::is_same_v<T, cow_String>)
    return cow_String("element ") + cow_String(value);
  else
    return T(value);
}

// The list has the model's elements, read by index and by the iterator.
template <class T>
::testing::AssertionResult Same(const cow_List<T>& list,
                                const std::deque<std::common_type_t<T>>& model) {
  if (list.Count() != static_cast<int>(model.size()))
    return ::testing::AssertionFailure()
           << "count " << list.Count() << ", expected " << model.size();
  for (int i = 0; i < list.Count(); ++i)
    if (!(list.ConstGet(i) == model[i])) return ::testing::AssertionFailure() << "index " << i;
  int i = 0;
  for (cow_ListIter<T> it(list); !it.IsDone(); it.Next(), ++i)
    if (!(it.Current() == model[i])) return ::testing::AssertionFailure() << "iterated " << i;
  if (i != list.Count()) return ::testing::AssertionFailure() << "iterated only " << i;
  return ::testing::AssertionSuccess();
}

template <class T>
cow_List<T> ListOf(int count) {
  cow_List<T> list;
  for (int i = 0; i < count; ++i)
    list.Append(Make<T>(i));
  return list;
}

// Every test checks at its end that all memory went back.
class ListTest : public VRKFootprintTest {
 protected:
  void TearDown() override {
    EXPECT_TRUE(Tracked::Live().empty()) << Tracked::Live().size() << " elements leaked";
    Tracked::copiesBeforeFailure = 0;
    VRKFootprintTest::TearDown();
  }
};

// Block size from the initial size, the table's 16-slot steps, the free slots moved to the
// front by a prepend, and the reset by Resize(0).
TEST_F(ListTest, ShapeFollowsSizeAndGrowth) {
  EXPECT_EQ(cow_List<int>(cow_ListPresize, 255).BlockShift(), 4);
  const cow_List<int> sized(cow_ListPresize, 256);  // blocks of 32: 8 needed, 16 spare
  EXPECT_EQ(sized.BlockShift(), 5);
  EXPECT_EQ(sized.TableLength(), 24);
  EXPECT_EQ(cow_List<int>(cow_ListPresize, 1000).TableLength(), 32);  // blocks of 64

  cow_List<int> list = ListOf<int>(17);
  EXPECT_EQ(list.TableLength(), 16);
  EXPECT_NE(&list.ConstGet(16), &list.ConstGet(15) + 1);  // the 17th starts a second block
  list.Prepend(-1);                                       // 2 blocks used, 14 free
  EXPECT_EQ(list.Head(), 14 * 16 - 1);
  list.Resize(0);
  EXPECT_EQ(list.Head(), 0);
  EXPECT_EQ(list.BlockShift(), 4);
  EXPECT_EQ(list.TableLength(), 0);

  cow_List<int> full = ListOf<int>(256);  // table full: a prepend adds 16 slots
  full.Prepend(-1);
  EXPECT_EQ(full.TableLength(), 32);
  EXPECT_EQ(full.Head(), 16 * 16 - 1);
}

TEST_F(ListTest, RemovalAtTheFrontReleasesABlockOnlyAtItsBoundary) {
  cow_List<int> list;
  list.Append(7);
  const unsigned long before = mem_Footprint();
  list.RemoveIndex(0);  // the front path: head moves to 1, the block stays
  EXPECT_EQ(list.Head(), 1);
  EXPECT_EQ(mem_Footprint(), before);

  cow_List<int> prepended;
  prepended.Prepend(7);  // at the last slot of a block
  const unsigned long held = mem_Footprint();
  prepended.RemoveIndex(0);
  EXPECT_EQ(held - mem_Footprint(), sizeof(cow_ListBlock<int>) + 16 * sizeof(int));
}

TEST_F(ListTest, WritesCopyOnlyTheTouchedBlocks) {
  cow_List<Tracked> list = ListOf<Tracked>(40);
  const unsigned long before = mem_Footprint();
  const cow_List<Tracked> copy = list;
  EXPECT_EQ(mem_Footprint(), before);
  list.Get(20) = Tracked(-1);
  EXPECT_EQ(Tracked::Live().size(), 40u + 16u);  // the second block, copied
  EXPECT_EQ(&list.ConstGet(0), &copy.ConstGet(0));
  list.Resize(18);                        // trims that private block, releases the third
  list.InsertIndex(1, list.ConstGet(0));  // an element of the list itself
  EXPECT_TRUE(copy == ListOf<Tracked>(40));
  EXPECT_TRUE(Same(list, {0, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}));
}

TEST_F(ListTest, InsertAndRemoveMoveTheShorterSide) {
  cow_List<int> list = ListOf<int>(40);
  list.InsertIndex(30, -1);
  EXPECT_EQ(list.Head(), 0);
  list.InsertIndex(5, -2);
  const int head = list.Head();
  EXPECT_NE(head, 0);
  list.RemoveIndex(3);
  EXPECT_EQ(list.Head(), head + 1);
  list.RemoveIndex(list.Count() - 3);
  EXPECT_EQ(list.Head(), head + 1);
}

TEST_F(ListTest, BulkOperationsAndMemberQueries) {
  const cow_List<int> list = ListOf<int>(100);
  EXPECT_EQ(list.Slice(5, 2).Count(), 0);
  EXPECT_EQ(list.Slice(-3, 4), ListOf<int>(4));
  EXPECT_TRUE(Same(list.Slice(97, 1000), {97, 98, 99}));

  const Tracked values[] = {1, 2, 3};
  cow_List<Tracked> tracked = ListOf<Tracked>(20);
  tracked.SetFromArray(values, 3);
  tracked.Fill(2, Tracked(9));  // never shrinks
  tracked.Fill(4, Tracked(9));
  tracked.Concatenate(tracked);
  EXPECT_TRUE(Same(tracked, {1, 2, 3, 9, 1, 2, 3, 9}));
  int count = -1;
  Tracked* array = tracked.GetCArray(count);
  ASSERT_EQ(count, 8);
  EXPECT_TRUE(array[6] == Tracked(3));
  delete[] array;

  cow_List<cow_String> names = ListOf<cow_String>(5);
  EXPECT_EQ(names.FindMember(Make<cow_String>(3)), 3);
  EXPECT_EQ(names.FindMember("absent"), -1);
  EXPECT_FALSE(names.AppendUnlessMember(Make<cow_String>(4)));
  EXPECT_TRUE(names.AppendUnlessMember("new"));
  EXPECT_TRUE(names.RemoveMember(Make<cow_String>(1)));
  EXPECT_FALSE(names.RemoveMember(Make<cow_String>(1)));
  EXPECT_TRUE(Same(names.Difference(ListOf<cow_String>(3)),
                   {Make<cow_String>(3), Make<cow_String>(4), "new"}));
}

TEST_F(ListTest, IteratorKeepsTheContentsItStartedWith) {
  cow_List<int> list = ListOf<int>(40);
  list.Prepend(-1);
  cow_ListIter<int> it(list);
  list.Get(1) = 100;
  int expected = -1;
  for (; !it.IsDone(); it.Next(), ++expected)
    EXPECT_EQ(it.Current(), expected);
  EXPECT_EQ(expected, 40);
  EXPECT_TRUE(cow_ListIter<int>(cow_List<int>()).IsDone());
}

TEST_F(ListTest, AFailedCopyLeavesBothListsIntact) {
  cow_List<Tracked> list = ListOf<Tracked>(20);
  const cow_List<Tracked> copy = list;
  Tracked::copiesBeforeFailure = 3;  // the block copy of the write fails on its third element
  EXPECT_THROW(list.Get(18) = Tracked(-1), int);
  EXPECT_TRUE(list == ListOf<Tracked>(20));
  EXPECT_TRUE(copy == ListOf<Tracked>(20));
}

TEST(ListDeathTest, BadIndexEndsTheProcess) {
  cow_List<int> list = ListOf<int>(3);
  EXPECT_DEATH(list.Get(3), "");
  EXPECT_DEATH(list.ConstGet(-1), "");
  EXPECT_DEATH(list.InsertIndex(4, 0), "");
  EXPECT_DEATH(cow_List<int>().Pop(), "");
  EXPECT_DEATH(list.Resize(-1), "");
}

template <class T>
class ListRandomTest : public ListTest {};
using ElementTypes = ::testing::Types<int, cow_String, Tracked>;
TYPED_TEST_SUITE(ListRandomTest, ElementTypes);

// 10,000 mixed operations against std::deque, for a list of the default shape and one with
// larger blocks, compared after each one. Copies taken along the way must keep their contents
// while the list and the other copies change, and are written themselves; they are compared
// after each write to one of them and every 16 steps.
TYPED_TEST(ListRandomTest, MatchesDequeThroughMixedOperations) {
  using T = TypeParam;
  struct Copy {
    cow_List<T> list;
    std::deque<T> model;
  };
  for (int presize : {0, 300}) {
    std::mt19937 random(20240611 + presize);
    auto below = [&random](int n) { return static_cast<int>(random() % n); };
    cow_List<T> list(cow_ListPresize, presize);
    std::deque<T> model;
    std::vector<Copy> copies;
    int maxCount = 0;
    for (int step = 0; step < 10000; ++step) {
      const int count = list.Count();
      const T value = Make<T>(step);
      // The size drifts to a target that changes twice, so that the list grows to many
      // blocks, shrinks and grows again.
      const int target = step < 3500 ? 800 : step < 6500 ? 30 : 300;
      int operation = below(11);
      if (operation < 4 && count > target)
        operation += 4;
      else if (operation >= 4 && operation < 8 && count < target)
        operation -= 4;
      if (count == 0 && operation >= 4) operation = 0;
      switch (operation) {
        case 0:
          list.Append(value);
          model.push_back(value);
          break;
        case 1:
          list.Prepend(value);
          model.push_front(value);
          break;
        case 2:
        case 3: {  // twice as likely
          const int index = below(count + 1);
          list.InsertIndex(index, value);
          model.insert(model.begin() + index, value);
          break;
        }
        case 4:
        case 5: {
          const int index = below(count);
          list.RemoveIndex(index);
          model.erase(model.begin() + index);
          break;
        }
        case 6:
          ASSERT_TRUE(list.Pop() == model.back());
          model.pop_back();
          break;
        case 7: {
          const int size = std::max(0, count - 10 + below(30));
          list.Resize(size);
          if (size < count) model.erase(model.begin() + size, model.end());
          break;
        }
        case 8:
          if (copies.size() < 6)
            copies.push_back({list, model});
          else
            copies[below(6)] = {list, model};
          break;
        case 9: {
          const int index = below(count);
          list.Get(index) = value;
          model[index] = value;
          break;
        }
        case 10: {
          if (copies.empty()) break;
          Copy& copy = copies[below(static_cast<int>(copies.size()))];
          if (copy.list.Count() > 0) {
            const int index = below(copy.list.Count());
            copy.list.Get(index) = value;
            copy.model[index] = value;
          }
          copy.list.Prepend(value);
          copy.model.push_front(value);
          break;
        }
      }
      maxCount = std::max(maxCount, list.Count());
      ASSERT_TRUE(Same(list, model)) << "step " << step << " operation " << operation;
      if (step % 16 != 0 && operation != 10) continue;
      for (const Copy& copy : copies)
        ASSERT_TRUE(Same(copy.list, copy.model)) << "step " << step;
    }
    for (const Copy& copy : copies)
      EXPECT_TRUE(Same(copy.list, copy.model));
    EXPECT_GT(maxCount, 700);
  }
}

}  // namespace
