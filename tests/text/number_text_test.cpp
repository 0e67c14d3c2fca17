#include "text/number_text.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

struct Row {
    double number;
    int decimals;
    const char* text;
};

const Row kRows[] = {
    {0.0, 6, "0"},
    {-0.0, 6, "0"},
    {1.0, 6, "1"},
    {-1.0, 0, "-1"},
    {0.5, 0, "1"},
    {1.5, 6, "1.5"},
    {0.000001, 6, "0.000001"},
    {0.0000004, 6, "0"},
    {-0.0000004, 6, "0"},
    {0.9999996, 6, "1"},
    {-12.0305, 3, "-12.031"},
    {1234567.875, 3, "1234567.875"},
    {0.0625, 15, "0.0625"},
    {1e300, 6, "1e+300"},
    {123456789012345678.0, 6, "123456789012345680"},
    {0.1, 16, "0.1"},
    {1e-9, 16, "1e-09"},
};

std::string Written(double number, int decimals) {
    char text[text::kLongestNumber];
    const char* end = text::WriteNumber(text, number, decimals);
    return std::string(text, static_cast<std::size_t>(end - text));
}

TEST(NumberText, RoundsToTheDecimalsAskedFor) {
    for (const Row& row : kRows)
        EXPECT_EQ(Written(row.number, row.decimals), row.text) << row.number;
}

TEST(NumberText, WritesWholeNumbersAndSigns) {
    for (int number = 0; number < 1200; ++number) {
        const std::string text = std::to_string(number);
        EXPECT_EQ(Written(number, 0), text);
        EXPECT_EQ(Written(number + 0.25, 6), text + ".25");
        EXPECT_EQ(Written(-number - 0.25, 6), "-" + text + ".25");
    }
}

TEST(NumberText, ReadsBackWithinHalfOfTheLastDigit) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> exponent(-6.0, 8.0);
    for (int count = 0; count < 100'000; ++count) {
        const double sign = random() % 2 == 0 ? -1.0 : 1.0;
        const double number = sign * std::pow(10.0, exponent(random));
        const int decimals = static_cast<int>(random() % 10);
        const std::string text = Written(number, decimals);
        ASSERT_LE(text.size(), std::size_t{text::kLongestNumber});
        double read = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        const double ulp = std::abs(number) * std::numeric_limits<double>::epsilon();
        ASSERT_LE(std::abs(read - number), 0.5 * std::pow(10.0, -decimals) + 2.0 * ulp) << text;
    }
}

// Every number of decimals, with numbers whose decimals are known.
TEST(NumberText, HasTheDigitsOfTheNumber) {
    std::mt19937_64 random(2);
    for (int decimals = 0; decimals <= text::kMostDecimals; ++decimals) {
        for (int count = 0; count < 5000; ++count) {
            const std::uint64_t most = std::uint64_t{1} << (1 + random() % 51);
            const std::uint64_t digits = 1 + random() % most;
            std::string expected = std::to_string(digits);
            const auto fraction = static_cast<std::size_t>(decimals);
            if (expected.size() <= fraction)
                expected.insert(0, fraction + 1 - expected.size(), '0');
            expected.insert(expected.size() - fraction, ".");
            while (expected.back() == '0')
                expected.pop_back();
            if (expected.back() == '.') expected.pop_back();
            const double number = static_cast<double>(digits) / std::pow(10.0, decimals);
            ASSERT_EQ(Written(number, decimals), expected) << decimals;
            ASSERT_EQ(Written(-number, decimals), '-' + expected) << decimals;
        }
    }
}

TEST(NumberText, NeverExceedsTheLongestNumber) {
    for (const double number :
         {std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::denorm_min(),
          -std::numeric_limits<double>::max(), -3.999999999999999e15, -2.2250738585072014e-308})
        for (int decimals = 0; decimals < 20; ++decimals)
            EXPECT_LE(Written(number, decimals).size(), std::size_t{text::kLongestNumber});
}

TEST(NumberText, KeepsMoreDecimalsForSmallerSkeletons) {
    EXPECT_EQ(text::DecimalsFor(170.0), 6);
    EXPECT_EQ(text::DecimalsFor(1.7), 8);
    EXPECT_EQ(text::DecimalsFor(0.017), 10);
    EXPECT_EQ(text::DecimalsFor(1e12), 4);
    EXPECT_GT(text::DecimalsFor(0.0), text::kMostDecimals);
}

}  // namespace
