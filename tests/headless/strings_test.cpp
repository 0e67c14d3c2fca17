// Texts and values, whose functions are also implemented by the host library.
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "host/string.h"
#include "host/value.h"

namespace strings_test {

using Zelk::CString;
using Zelk::CValue;

std::wstring Wide(const CString& text) {
    return {text.GetWideString(), text.Length()};
}

TEST(CString, IsEmptyWithoutAText) {
    for (const CString& text : {CString(), CString(L""), CString(nullptr)}) {
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(text.Length(), 0u);
        ASSERT_NE(text.GetWideString(), nullptr);
        EXPECT_EQ(text.GetWideString()[0], L'\0');
        EXPECT_EQ(text, CString());
    }
}

TEST(CString, ComparesCharacterByCharacter) {
    EXPECT_EQ(CString(L"Hips"), CString(L"Hips"));
    EXPECT_FALSE(CString(L"Hips") == CString(L"hips"));
    EXPECT_FALSE(CString(L"Hips") == CString(L"Hip"));
    EXPECT_FALSE(CString(L"Hips") == CString());
}

TEST(CString, SharesItsTextBetweenCopies) {
    const CString text(L"Hips");
    CString copy = text;
    EXPECT_EQ(copy.GetWideString(), text.GetWideString());
    CString moved = std::move(copy);
    EXPECT_EQ(moved.GetWideString(), text.GetWideString());
    moved += L"Eff";
    EXPECT_EQ(Wide(text), L"Hips");
    EXPECT_EQ(Wide(moved), L"HipsEff");
}

TEST(CString, MayBeAssignedToItself) {
    CString text(L"Hips");
    const CString& same = text;
    text = same;
    EXPECT_EQ(Wide(text), L"Hips");
    text = text.GetWideString() + 1;
    EXPECT_EQ(Wide(text), L"ips");
    text += same;
    EXPECT_EQ(Wide(text), L"ipsips");
    text = static_cast<const wchar_t*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, Joins) {
    EXPECT_EQ(Wide(CString(L"a") + CString(L"b") + CString()), L"ab");
    EXPECT_EQ(Wide(CString() + CString(L"b")), L"b");
    EXPECT_TRUE((CString() + CString()).IsEmpty());
}

TEST(CValue, IsEmptyAtFirst) {
    const CValue value;
    EXPECT_EQ(value.GetType(), CValue::Type::Empty);
    EXPECT_EQ(value.AsDouble(), 0.0);
    EXPECT_EQ(value.AsRef(), Zelk::CRef());
    EXPECT_TRUE(value.AsString().IsEmpty());
}

TEST(CValue, GivesWhatItHoldsAndNothingElse) {
    const Zelk::CRef ref(3, 4);
    const CValue values[] = {CValue(7), CValue(0.5), CValue(CString(L"Hips")), CValue(ref)};
    const double numbers[] = {7.0, 0.5, 0.0, 0.0};
    const wchar_t* const texts[] = {L"", L"", L"Hips", L""};
    for (std::size_t index = 0; index < std::size(values); ++index) {
        EXPECT_EQ(values[index].AsDouble(), numbers[index]);
        EXPECT_EQ(Wide(values[index].AsString()), texts[index]);
        EXPECT_EQ(values[index].AsRef(), index == 3 ? ref : Zelk::CRef());
    }
}

TEST(CValue, ReleasesItsTextWhenItIsAssignedAnother) {
    CValue value{CString(L"Hips")};
    CValue copy = value;
    const CValue& same = copy;
    copy = same;
    value = 1.5;
    EXPECT_EQ(value.AsDouble(), 1.5);
    EXPECT_EQ(Wide(copy.AsString()), L"Hips");
    copy = CValue(CString(L"Knee"));
    EXPECT_EQ(Wide(copy.AsString()), L"Knee");
    copy = CValue();
    EXPECT_TRUE(copy.AsString().IsEmpty());
    EXPECT_TRUE(CValue(CString()).AsString().IsEmpty());
}

}  // namespace strings_test
