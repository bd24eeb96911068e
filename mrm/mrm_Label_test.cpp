#include "mrm_Label.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestLibrary.h"
#include "aio_ostrstream.h"
#include "mrm_Manager.h"

namespace {

using LabelTest = VRKLibraryTest;

// A client's own kind, with no printer until it registers one.
class ClientLabel : public mrm_Label {
 public:
  ClientLabel(int first, short extra) : mrm_Label(7) {
    UField(0) = first;
    UShortField() = extra;
    UField(3) = 99;  // outside the fields: written nowhere
  }
};

std::string Text(const mrm_Label& label) {
  aio_ostrstream os;
  os << label;
  return os.str().c_str();
}

TEST_F(LabelTest, KindsPrintThroughTheTable) {
  EXPECT_EQ(mrm_Label(), mrm_VoidLabel());
  EXPECT_EQ(Text(mrm_Label()), "VOID0");
  EXPECT_EQ(Text(mrm_VoidLabel()), "VOID0");
  EXPECT_EQ(Text(mrm_JobPhaseLabel()), "mrm_JobPhase");
  EXPECT_EQ(Text(mrm_StepPhaseLabel(2)), "mrm_Step/2");
  EXPECT_EQ(Text(mrm_TestLabel(1, 2, 3)), "mrm_Test/1/2/3");
  EXPECT_EQ(Text(ClientLabel(5, 0)), "[?noLabelPrinterLoaded:7/0/5/0/0]");

  mrm_Manager& manager = mrm_Manager::Instance();
  manager.RegisterLabelPrinter(
      7, [](aio_ostream& os, const mrm_Label& l) { os << "client " << l.ConstGetUField(0); });
  EXPECT_EQ(Text(ClientLabel(5, 0)), "client 5");
  // Keys outside the table are neither stored nor read.
  manager.RegisterLabelPrinter(31, mrm_VoidLabel::Print);
  EXPECT_EQ(manager.GetPrinterPtr(31), nullptr);
  EXPECT_EQ(manager.GetPrinterPtr(-1), nullptr);
}

TEST_F(LabelTest, FourIntsCarryALabelWithTheKeyInTheLowHalf) {
  const ClientLabel label(5, -2);
  int buffer[4];
  label.WriteTo(buffer);
  EXPECT_EQ(static_cast<unsigned>(buffer[0]), 0xfffe0007u);
  mrm_Label copy;
  copy.ReadFrom(buffer);
  EXPECT_EQ(copy, label);
  EXPECT_EQ(copy.ConstGetTypeKey(), 7);
  EXPECT_EQ(copy.ConstGetUShortField(), -2);
  EXPECT_EQ(copy.ConstGetUField(3), 0);
  EXPECT_EQ(copy.ConstGetUField(-1), 0);
  copy.GenericRead("mrm_Step/4");
  EXPECT_EQ(copy, label);
  EXPECT_NE(ClientLabel(5, 1), ClientLabel(5, 0));
}

// In a tree, kinds sort by their first word, then by their fields.
TEST_F(LabelTest, TreesOrderLabelsWordByWord) {
  omi_Btree<mrm_Label, int> tree(-1);
  const std::vector<mrm_Label> labels = {mrm_StepPhaseLabel(2), mrm_JobPhaseLabel(),
                                         ClientLabel(1, 1),     mrm_VoidLabel(),
                                         mrm_StepPhaseLabel(1), ClientLabel(1, 0)};
  for (size_t i = 0; i < labels.size(); ++i)
    EXPECT_TRUE(tree.Insert(labels[i], static_cast<int>(i)));
  std::vector<int> order;
  for (omi_BtreeIterator<mrm_Label, int> it(tree); !it.IsDone(); it.Next())
    order.push_back(it.CurrentValue());
  EXPECT_EQ(order, (std::vector<int>{3, 1, 4, 0, 5, 2}));
  EXPECT_EQ(tree.ConstFind(ClientLabel(1, 1)), 2);
}

}  // namespace
