#include "cli/columns.h"

#include <gtest/gtest.h>

#include "cli/locale_setup.h"

namespace {

TEST(ElidedText, CountsColumns) {
    cli::SetCharacterLocale();
    EXPECT_EQ(cli::Elide(L"LeftArm", 7), L"LeftArm");
    EXPECT_EQ(cli::Elide(L"LeftArm", 6), L"LeftA\x2026");
    EXPECT_EQ(cli::Elide(L"LeftArm", 1), L"\x2026");
    EXPECT_EQ(cli::Elide(L"\x5DE6\x8155", 4), L"\x5DE6\x8155");
    EXPECT_EQ(cli::Elide(L"\x5DE6\x8155", 3), L"\x5DE6\x2026");
    EXPECT_EQ(cli::Elide(L"\x5DE6\x8155", 2), L"\x2026");
    EXPECT_EQ(cli::DisplayWidth(L"\x5DE6\x8155g"), 5);
}

}  // namespace
