#include "take/commands.h"

#include <gtest/gtest.h>

namespace {

TEST(Commands, AreFoundByTheirNames) {
    const take::FormatInfo* biovision = take::FindCommand(L"Biovision Import function");
    ASSERT_NE(biovision, nullptr);
    EXPECT_EQ(biovision, &take::InfoOf(take::Format::Biovision));
    EXPECT_EQ(biovision->textArguments, 1U);
    EXPECT_FALSE(biovision->hasLimitsAndLengths);
    const take::FormatInfo* acclaim = take::FindCommand(L"Acclaim Import function");
    ASSERT_NE(acclaim, nullptr);
    EXPECT_EQ(acclaim, &take::InfoOf(take::Format::Acclaim));
    EXPECT_EQ(acclaim->textArguments, 2U);
    EXPECT_TRUE(acclaim->hasLimitsAndLengths);
    EXPECT_EQ(take::FindCommand(L"biovision import function"), nullptr);
    EXPECT_EQ(take::FindCommand(L""), nullptr);
}

TEST(Commands, DescribeEveryArgument) {
    for (const take::FormatInfo& info : take::Formats())
        for (std::size_t index = 0; index < info.arguments.size(); ++index) {
            EXPECT_FALSE(info.arguments[index].meaning.empty()) << index;
            EXPECT_EQ(info.arguments[index].kind == take::ArgumentKind::Text,
                      index < info.textArguments)
                << index;
        }
    EXPECT_EQ(take::Formats()[0].arguments.size(), 6U);
    EXPECT_EQ(take::Formats()[1].arguments.size(), 10U);
    EXPECT_EQ(take::Formats()[1].arguments[4].kind, take::ArgumentKind::Real);
}

}  // namespace
