#include "pdc_PPerrMementoWrite.h"

#include <gtest/gtest.h>

#include <string>

#include "VRKTestLibrary.h"
#include "aio_ostrstream.h"
#include "atr_translate.h"
#include "cls_MetadataRegistrar.h"
#include "cls_WriteVisitor.h"
#include "cls_xoMap.h"
#include "nex_TextException.h"
#include "pdc_PPerrAgentList.h"
#include "pdc_PPerrWriteListObj.h"
#include "pnt_PrettyPrint.h"

namespace {

constexpr unsigned kUnknown = 0x280001;

class PPerrTest : public VRKLibraryTest {
 protected:
  // Writes `object` through a root memento of class `classId`, then flushes the printer.
  template <class T>
  std::string Print(unsigned classId, const T& object) {
    {
      cls_WriteVisitor root(new pdc_PPerrMementoWrite(m_Registry, classId, &m_Printer));
      object.DBWrite(root);
    }
    m_Printer.Flush();
    return m_Out.str().c_str();
  }

  const cls_ClassRegistrar* m_Registry = &cls_MetadataRegistrar::Instance().GetWorkingSet();
  aio_ostrstream m_Out;
  pnt_PrettyPrint m_Printer{m_Out, 78, 2};
};

// A record of an unknown class that holds an object in one field.
template <class T>
struct Holder {
  void DBWrite(const cls_WriteVisitor& visitor) const {
    value.DBWrite(cls_WriteVisitor(visitor, cls_FieldHandle(0, name), nullptr, &value));
  }
  const char* name;
  const T& value;
};

TEST_F(PPerrTest, AnExceptionPrintsItsBasePartAndItsOwnFieldsInOneFrame) {
  nex_TextException error(atr_translate("disk full").Result());
  try {
    error.Throw("solver", 12);
  } catch (const nex_TextException& caught) {
    EXPECT_EQ(Print(caught.DynTypeId(), caught),
              "\n"
              "<< CLASS NAME: nex_TextException\n"
              "  m_FromFile: solver\n"
              "  m_FromLine: 12\n"
              "  m_Value: disk full\n"
              ">>\n"
              "\n");
  }
}

TEST_F(PPerrTest, AListOfValuesPrintsOneValueALineAndAnUnknownClassHasNoFrame) {
  cow_List<int> ids;
  ids.Append(4);
  ids.Append(-5);
  const cls_xpListInt list = cls_xpListIntFromCow(ids);
  const cls_xpListString empty;
  testing::internal::CaptureStderr();
  Print(kUnknown, Holder<cls_xpListInt>{"ids", list});
  EXPECT_EQ(Print(kUnknown, Holder<cls_xpListString>{"names", empty}),
            "ids: \n[\n  4\n  -5\n]\n\nnames: \n[\n]\n\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "class not registered  280001 \nclass not registered  280001 \n");
}

TEST_F(PPerrTest, AMapOfObjectsPrintsEachElementUnderItsKey) {
  cls_xoMap<cow_String, cls_xp1DArrayListFloat> map;
  map.Insert("loads", cls_xp1DArrayListFloatFromCow(cow_List<float>()));
  map.Get("loads").Append(1.5f);
  testing::internal::CaptureStderr();
  EXPECT_EQ(Print(kUnknown, Holder<decltype(map)>{"m", map}),
            "m: \n{\n  loads: \n  [\n    1.5\n  ]\n}\n\n");
  testing::internal::GetCapturedStderr();
}

TEST_F(PPerrTest, NullsAgentsAndFieldsOfEveryType) {
  cls_ClassRegistrar registry;
  registry.CreateClassMD("bas_UserData", 0x280005, 1, nullptr, 1);
  registry.CreateClassMD("Part", 0x280006, 1, nullptr, 1)
      .AddAttribute(cls_FieldHandle(0, "xyz"), cls_AttrCollection, 0x230001,
                    static_cast<cls_CollectionType>(53));
  const cls_FieldHandle f(0, "f");
  testing::internal::CaptureStderr();
  {
    cls_WriteVisitor part(new pdc_PPerrMementoWrite(&registry, 0x280006, &m_Printer));
    cls_MementoWrite& memento = *part.Memento();
    memento.Write(f, true);
    memento.Write(f, 'c');
    memento.Write(f, static_cast<unsigned char>(7));
    memento.Write(f, 2.5);
    memento.Write(f, 40000000000L);  // 32 bits stored
    memento.Write(f, cow_String("text"));
    memento.WriteNull(f);
    delete memento.MakeAgentList(0.0f, 3);
    delete memento.MakeAgentList(0, 3);
    delete memento.MakeAgentBlob();
    EXPECT_EQ(memento.MakeAgentList(0.0, 3), nullptr);
    EXPECT_EQ(memento.MakeIntTableInt(), nullptr);
    memento.CheckCollectionType(static_cast<cls_CollectionType>(53), "xyz");
    memento.CheckCollectionType(static_cast<cls_CollectionType>(54), "xyz");
    cls_WriteListObj* list = memento.MakeListObj(2);
    list->WriteNull(0x280006);
    list->WriteNull(kUnknown);
    delete list;
    cls_WriteMapInt2Obj* map = memento.MakeMapInt2Obj();
    const int key = 3;
    map->WriteNull(&key, 0x280006);
    delete map;
    cls_WriteVisitor user(part, cls_FieldHandle(1, "user"), nullptr, nullptr);
    user.StartWrite(0x280005, cls_Uid());
    user.Write(f, cow_String("secret"));  // left out of user data
    user.Write(f, 1);
  }
  m_Printer.Flush();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Error in collections types have: 53 looking for: 54 xyz\n");
  EXPECT_EQ(std::string(m_Out.str().c_str()),
            "\n<< CLASS NAME: Part\n"
            "  f: 1\n  f: c\n  f: 7u\n  f: 2.5\n  f: 1345294336\n  f: text\n  f: NULL\n"
            "  FLOAT LIST\n  INT LIST\n  BINARY DATA\n"
            "\n  [\n    NULL (Part)\n    NULL\n  ]\n"
            "\n  {\n    3: NULL\n  }\n"
            "  user: \n"
            "  << CLASS NAME: bas_UserData\n    f: 1\n  >>\n"
            ">>\n\n");
}

TEST_F(PPerrTest, WithNoPrinterTheDebugPrinterIsUsed) {
  testing::internal::CaptureStderr();
  delete new pdc_PPerrMementoWrite(m_Registry, nex_TextException::TypeId(), nullptr);
  pnt_debugPrint().Flush();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n<< CLASS NAME: nex_TextException\n>>\n\n");
}

}  // namespace
