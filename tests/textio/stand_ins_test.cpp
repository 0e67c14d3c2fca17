// Compares the replacement for std::from_chars with the original.
#include <bit>
#include <charconv>
#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <system_error>

#include "textio/from_chars_stand_in.h"

namespace stand_ins_test {

constexpr double kUntouched = 12345.0;

const std::string kTexts[] = {
    "", " 1", "+1", "1", "-1", "--1", "-", ".", "-.", "1.", ".5", "-.5", "1.5.2", "1,5", "1_000",
    // exponents
    "1e", "1e+", "1e-", "1e5", "1E+5", "1.e-5", ".5e1", "e5", ".e5", "1e00000000000000000005",
    // texts that are not decimal numbers
    "0x10", "inf", "-inf", "INFINITY", "infinit", "inf5", "nan", "-nan", "nan(7)", "NaN(a_b)x",
    "nan(", "nan(a b)", "n", "i",
    // out of range, or just inside it
    "1e400", "-1e400", "1e-400", "-1e-400", "0e-400", "0e400", "-0", "0.000e500", "-0.0e-500",
    "1e99999999999999999999", "1e-99999999999999999999", "0e99999999999999999999",
    "0.1e-2147483649", "1e2147483648", "1e4294967296", "1.7976931348623157e308",
    "1.7976931348623158e308", "1.7976931348623159e308", "2.2250738585072014e-308",
    "2.2250738585072011e-308", "4.9406564584124654e-324", "2.4703282292062328e-324",
    "2.4703282292062327e-324", "0.0000000000000000000000000000000001e-300",
    // rounding
    "9007199254740993", "9007199254740993.00000000000000000000000000000000000001",
    "00000000000000000000000000000000000001.5",
    "3.14159265358979323846264338327950288419716939937510582097494"};

void ExpectSame(const std::string& text) {
    const char* const first = text.data();
    const char* const last = first + text.size();
    double expected = kUntouched;
    double actual = kUntouched;
    const auto [expectedEnd, expectedError] = std::from_chars(first, last, expected);
    const auto [end, error] = textio::stand_ins::from_chars(first, last, actual);
    EXPECT_EQ(end - first, expectedEnd - first) << text;
    EXPECT_EQ(error, expectedError) << text;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(actual), std::bit_cast<std::uint64_t>(expected)) << text;
}

TEST(FromCharsStandIn, AgreesWithTheStandardOneOnSpecialTexts) {
    for (const std::string& text : kTexts)
        ExpectSame(text);
}

TEST(FromCharsStandIn, AgreesWithTheStandardOneOnRandomDecimals) {
    std::mt19937_64 random(1);
    for (int count = 0; count < 20'000; ++count) {
        std::string text = std::to_string(random() >> random() % 64);
        text.insert(random() % text.size(), ".");
        if (count % 3 == 0) text += 'e' + std::to_string(static_cast<int>(random() % 700) - 350);
        ExpectSame(text);
    }
}

}  // namespace stand_ins_test
