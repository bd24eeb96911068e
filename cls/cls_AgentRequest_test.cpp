#include "cls_AgentRequest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VRKTestMemento.h"

namespace {

using ::testing::ElementsAre;

// A collection that records what it is asked for, with the key as text first.
class Recorder : public cls_WriteListObj,
                 public cls_AgentListObj,
                 public cls_AgentMapKey2Obj<cow_String> {
 public:
  cls_MementoWrite* MakeWriteObj(unsigned classId, const cls_Uid&,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return Note("list", classId);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(unsigned classId, const cls_Uid&, const void*) override {
    return Note("list ptr", classId);
  }
  void WriteNull(unsigned) override {}
  cls_MementoWrite* MakeWriteObj(int index, unsigned classId, const cls_Uid&,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return Note(std::to_string(index), classId);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(int index, unsigned classId, const cls_Uid&,
                                        const void*) override {
    return Note(std::to_string(index) + " ptr", classId);
  }
  cls_MementoWrite* MakeWriteObj(const cow_String* key, unsigned classId, const cls_Uid&,
                                 const cow_COW<int, cow_Direct<int>>*) override {
    return Note(key->c_str(), classId);
  }
  cls_MementoWrite* MakeWriteObjWithPtr(const cow_String* key, unsigned classId, const cls_Uid&,
                                        const void*) override {
    return Note(std::string(key->c_str()) + " ptr", classId);
  }

  std::vector<std::string> calls;

 private:
  cls_MementoWrite* Note(const std::string& call, unsigned classId) {
    calls.push_back(call + " " + std::to_string(classId));
    return nullptr;
  }
};

using AgentRequestTest = VRKLibraryTest;

TEST_F(AgentRequestTest, RequestsForwardToTheirCollectionWithTheKeyFirst) {
  Recorder recorder;
  const cls_Uid uid;
  cls_WriteRequestListObj list(&recorder);
  cls_AgentRequestListObj agent(&recorder, 7);
  cow_String* key = new cow_String("loads");
  cls_AgentRequestMapKey2Obj<cow_String> keyed(&recorder, *key);
  delete key;  // the request keeps a copy
  for (const cls_AgentRequest* request :
       std::vector<const cls_AgentRequest*>{&list, &agent, &keyed}) {
    request->MakeWriteObj(1, uid, nullptr);
    EXPECT_FALSE(cls_WriteVisitor(*request, nullptr).StartWrite(2, uid));
  }
  EXPECT_THAT(recorder.calls,
              ElementsAre("list 1", "list ptr 2", "7 1", "7 ptr 2", "loads 1", "loads ptr 2"));
}

// A list cursor's AppendBlock appends value by value, and nothing for a count of 0 or less.
TEST(WriteListPrimTest, AppendBlockAppendsEachValue) {
  struct Values : cls_WriteListPrim<int> {
    void Append(const int* value) override { seen.push_back(*value); }
    std::vector<int> seen;
  } values;
  const int data[] = {3, 1, 4};
  values.AppendBlock(data, 3);
  values.AppendBlock(data, 0);
  values.AppendBlock(data, -2);
  EXPECT_THAT(values.seen, ElementsAre(3, 1, 4));
}

}  // namespace
