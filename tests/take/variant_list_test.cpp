#include "take/variant_list.h"

#include <gmock/gmock.h>

namespace {

TEST(VariantList, IsZeroWhereNothingWasAdded) {
    const take::VariantList list;
    for (int index = 0; index < 10; ++index) {
        EXPECT_EQ(list.Data()[index].vt, 0);
        EXPECT_EQ(list.Data()[index].slot[0], 0U);
        EXPECT_EQ(list.Data()[index].slot[1], 0U);
    }
}

TEST(VariantList, HoldsEachKind) {
    take::VariantList list;
    list.AddText(L"walk.bvh");
    list.AddBoolean(true);
    list.AddBoolean(false);
    list.AddWord(1);
    list.AddReal(-2.5);
    list.AddText(L"");
    const VARIANT* records = list.Data();
    EXPECT_STREQ(records[0].bstrVal, L"walk.bvh");
    EXPECT_EQ(records[1].boolVal, 0xFFFF);
    EXPECT_EQ(records[2].boolVal, 0);
    EXPECT_EQ(records[3].boolVal, 1);
    EXPECT_EQ(records[4].dblVal, -2.5);
    EXPECT_STREQ(records[5].bstrVal, L"");
    EXPECT_EQ(records[6].bstrVal, nullptr);
}

TEST(VariantList, KeepsItsTextsAsItGrows) {
    take::VariantList list;
    for (int index = 0; index < 1000; ++index)
        list.AddText(std::to_wstring(index));
    for (int index = 0; index < 1000; ++index)
        EXPECT_EQ(list.Data()[index].bstrVal, std::to_wstring(index));
}

}  // namespace
