#include "cow_COW.h"

#include <gtest/gtest.h>

#include "VRKTestLibrary.h"
#include "mem_Alloc.h"

namespace {

struct Value : mem_AllocationOperators {
  explicit Value(int v) : value(v) {}
  int value;
};

struct Shape : mem_AllocationOperators {
  virtual ~Shape() = default;
  virtual Shape* Copy() const = 0;
  virtual int Corners() const = 0;
};

struct Square : Shape {
  Shape* Copy() const override { return new Square(*this); }
  int Corners() const override { return 4; }
};

// Every test checks at its end that all memory went back.
using CowTest = VRKFootprintTest;

TEST_F(CowTest, SharedHolderCopiesAndLeavesTheOthersSoleHolderWritesInPlace) {
  cow_COW<Value> a(Value(1));
  const Value* first = &a.Get();
  EXPECT_EQ(&a.Get(), first);
  cow_COW<Value> b = a;
  cow_COW<Value> c = a;
  EXPECT_EQ(a.UseCount(), 3);
  EXPECT_EQ(&b.ConstGet(), &a.ConstGet());

  b.Get().value = 2;
  EXPECT_NE(&b.ConstGet(), &a.ConstGet());
  EXPECT_EQ(a.ConstGet().value, 1);
  EXPECT_EQ(b.ConstGet().value, 2);
  EXPECT_EQ(a.UseCount(), 2);  // the others lost one holder
  EXPECT_EQ(b.UseCount(), 1);
  EXPECT_EQ(&a.ConstGet(), first);

  c = b;
  EXPECT_EQ(a.UseCount(), 1);
  EXPECT_EQ(&a.Get(), first);  // sole holder again: written in place
  EXPECT_EQ(b.UseCount(), 2);
  const cow_COW<Value>& same = c;
  c = same;
  EXPECT_EQ(c.ConstGet().value, 2);
}

TEST_F(CowTest, VirtualPolicyKeepsTheExactClass) {
  cow_COW<Shape, cow_Virtual<Shape>> a(Square{});
  cow_COW<Shape, cow_Virtual<Shape>> b = a;
  Shape& own = b.Get();
  EXPECT_NE(&own, &a.ConstGet());
  EXPECT_NE(dynamic_cast<Square*>(&own), nullptr);
  EXPECT_EQ(own.Corners(), 4);
}

TEST_F(CowTest, InstallingAPointerFollowsTheCount) {
  cow_CountedHld<Value> a(new Value(1));
  a = new Value(2);  // sole holder: old object destroyed, count kept
  EXPECT_EQ(a.GetRef().value, 2);
  EXPECT_EQ(a.UseCount(), 1);

  cow_CountedHld<Value> b = a;
  b = new Value(3);  // shared: b moves to a count of its own
  EXPECT_EQ(a.GetRef().value, 2);
  EXPECT_EQ(b.GetRef().value, 3);
  EXPECT_EQ(a.UseCount(), 1);
  EXPECT_EQ(b.UseCount(), 1);

  // An empty holder has no count block until it gets an object.
  const unsigned long before = mem_Footprint();
  cow_CountedHld<Value> empty(nullptr);
  cow_CountedHld<Value> alsoEmpty = empty;
  EXPECT_EQ(mem_Footprint(), before);
  EXPECT_EQ(empty.UseCount(), 0);
  alsoEmpty = new Value(4);
  EXPECT_EQ(alsoEmpty.UseCount(), 1);
  EXPECT_EQ(empty.GetPtr(), nullptr);
}

}  // namespace
