#include "app/columns.h"

#include <gtest/gtest.h>

#include "app/locale_setup.h"

namespace {

TEST(ElidedText, CountsColumns) {
    app::SetCharacterLocale();
    EXPECT_EQ(app::Elide(L"LeftArm", 7), L"LeftArm");
    EXPECT_EQ(app::Elide(L"LeftArm", 6), L"LeftA\x2026");
    EXPECT_EQ(app::Elide(L"LeftArm", 1), L"\x2026");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 4), L"\x5DE6\x8155");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 3), L"\x5DE6\x2026");
    EXPECT_EQ(app::Elide(L"\x5DE6\x8155", 2), L"\x2026");
    EXPECT_EQ(app::DisplayWidth(L"\x5DE6\x8155g"), 5);
}

}  // namespace
