#include "textio/number.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <string>

#include "tests/support/core/comma_locale.h"
#include "tests/textio/loaded.h"

namespace {

using textio_test::Load;

constexpr double kUntouched = 12345.0;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

std::uint64_t Bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

struct RealRow {
    const char* name;
    std::string token;
    bool accepted;
    double value;
};
std::ostream& operator<<(std::ostream& out, const RealRow& row) {
    return out << row.name;
}

const RealRow kRealRows[] = {
    {"Whole", "12", true, 12.0},
    {"Negative", "-1.5", true, -1.5},
    {"PointFirst", ".5", true, 0.5},
    {"MinusPoint", "-.5", true, -0.5},
    {"PointLast", "5.", true, 5.0},
    {"Exponent", "1e3", true, 1000.0},
    {"CapitalExponent", "1E-3", true, 0.001},
    {"SignedExponent", "1e+2", true, 100.0},
    {"ExponentWithoutDigits", "3e", true, 3.0},
    {"ExponentSignAlone", "3e+", true, 3.0},
    {"Plus", "+1.5", true, 1.5},
    {"Tail", "12abc", true, 12.0},
    {"DegreeSign", "90\xC2\xB0", true, 90.0},
    {"CommaIsATail", "1,5", true, 1.0},
    {"TwoPoints", "1.2.3", true, 1.2},
    {"TwoMinuses", "1-2", true, 1.0},
    {"Underscore", "1_000", true, 1.0},
    {"FormFeedFirst", "\f2.5", true, 2.5},
    {"VerticalTabFirst", "\v-2.5", true, -2.5},
    {"Hexadecimal", "0x10", true, 16.0},
    {"HexadecimalFraction", "0x1.8p1", true, 3.0},
    {"NegativeHexadecimal", "-0x1p-1", true, -0.5},
    {"HexadecimalPrefixAlone", "0x", true, 0.0},
    {"Infinity", "inf", true, kInfinity},
    {"LongInfinity", "-INFINITY", true, -kInfinity},
    {"NotANumber", "nan", true, kNan},
    {"NotANumberWithPayload", "NaN(7)", true, std::strtod("NaN(7)", nullptr)},
    {"NegativeNotANumber", "-nan", true, std::strtod("-nan", nullptr)},
    {"Overflow", "1e400", true, kInfinity},
    {"NegativeOverflow", "-1e400", true, -kInfinity},
    {"Largest", "1.7976931348623157e308", true, std::numeric_limits<double>::max()},
    {"RoundsToInfinity", "1.7976931348623159e308", true, kInfinity},
    {"SmallestNormal", "2.2250738585072014e-308", true, std::numeric_limits<double>::min()},
    {"LargestSubnormal", "2.2250738585072011e-308", true, 2.2250738585072011e-308},
    {"SmallestSubnormal", "4.9406564584124654e-324", true,
     std::numeric_limits<double>::denorm_min()},
    {"RoundsUpToSubnormal", "2.5e-324", true, std::numeric_limits<double>::denorm_min()},
    {"HalfwayToEven", "9007199254740993", true, 9007199254740992.0},
    {"JustAboveHalfway", "9007199254740993.00000000000000000000000000000001", true,
     9007199254740994.0},
    {"SeventeenDigits", "0.10000000000000001", true, 0.1},
    {"ManyDigits", "3.14159265358979323846264338327950288419716939937510582097494", true,
     3.141592653589793},
    {"LeadingZeros", "007.5", true, 7.5},

    {"Zero", "0", true, 0.0},
    {"ZeroPoint", "0.", true, 0.0},
    {"ZeroFraction", "0.000", true, 0.0},
    {"ZeroExponent", "0e5", true, 0.0},
    {"ZeroWithTail", "0abc", true, 0.0},
    {"MinusZero", "-0", true, -0.0},
    {"MinusZeroFraction", "-0.0", true, -0.0},
    {"MinusZeroTail", "-0x", true, -0.0},
    {"UnderflowWithZeroFirst", "0.1e-400", true, 0.0},
    {"PointZero", ".0", false, 0.0},
    {"MinusPointZero", "-.0", false, 0.0},
    {"PlusZero", "+0", false, 0.0},
    {"Underflow", "1e-400", false, 0.0},
    {"MinusUnderflow", "-1e-400", false, 0.0},
    {"FormFeedZero", "\f0", false, 0.0},
    {"Word", "abc", false, 0.0},
    {"Brace", "}", false, 0.0},
    {"Minus", "-", false, 0.0},
    {"PlusAlone", "+", false, 0.0},
    {"Point", ".", false, 0.0},
    {"MinusPointAlone", "-.", false, 0.0},
    {"ExponentAlone", "e5", false, 0.0},
    {"CommaFirst", ",5", false, 0.0},
    {"TwoSigns", "--1", false, 0.0},
    {"PlusMinus", "+-1", false, 0.0},
    {"FullWidthDigit", "\xEF\xBC\x91", false, 0.0},
    {"InvalidText", "\xFF\xFE", false, 0.0},
};

class RealNumberTable : public testing::TestWithParam<RealRow> {};

// Reads the token of a row between two other texts.
void ExpectReal(const RealRow& row, const std::string& before, const std::string& after) {
    SCOPED_TRACE("'" + before + "' … '" + after + "'");
    const auto reader = Load(before + row.token + after);
    double value = kUntouched;
    EXPECT_EQ(reader->GetNextFloat(value), row.accepted);
    EXPECT_EQ(Bits(value), Bits(row.accepted ? row.value : kUntouched));
    if (!row.accepted) {
        EXPECT_EQ(reader->GetPosition(), 0u);
        EXPECT_EQ(reader->GetNextString(), row.token);
        return;
    }
    EXPECT_EQ(Bits(value), Bits(std::strtod(row.token.c_str(), nullptr)));
    EXPECT_EQ(reader->GetPosition(), before.size() + row.token.size());
}

TEST_P(RealNumberTable, IsReadAsTheCLibraryReadsIt) {
    for (const char* before : {"", " ", "\r\n\t"})
        for (const char* after : {"", " ", "\n", "\t7", " 7e5", "\r\n"})
            ExpectReal(GetParam(), before, after);
}

TEST_P(RealNumberTable, EndsAtANulByte) {
    const auto reader = Load(GetParam().token + std::string("\0"
                                                            "99 7",
                                                            5));
    double value = kUntouched;
    EXPECT_EQ(reader->GetNextFloat(value), GetParam().accepted);
    EXPECT_EQ(Bits(value), Bits(GetParam().accepted ? GetParam().value : kUntouched));
    EXPECT_EQ(reader->GetPosition(), GetParam().accepted ? reader->GetSize() : 0u);
}

INSTANTIATE_TEST_SUITE_P(, RealNumberTable, testing::ValuesIn(kRealRows),
                         [](const auto& row) { return std::string(row.param.name); });

// One locale for all rows: building it takes longer than reading them.
TEST(RealNumber, DoesNotDependOnTheDecimalComma) {
    const support::CommaLocale comma;
    ASSERT_EQ(comma.Problem(), "");
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5) << "the locale has no decimal comma";
    for (const RealRow& row : kRealRows) {
        const auto reader = Load(row.token);
        double value = kUntouched;
        EXPECT_EQ(reader->GetNextFloat(value), row.accepted) << row.name;
        EXPECT_EQ(Bits(value), Bits(row.accepted ? row.value : kUntouched)) << row.name;
    }
}

TEST(RealNumber, SplitsAtTheRegisteredSeparators) {
    const auto reader = Load("(1.5,-2e1)", "\t\r\n (),");
    double value = 0.0;
    EXPECT_TRUE(reader->GetNextFloat(value));
    EXPECT_EQ(value, 1.5);
    EXPECT_TRUE(reader->GetNextFloat(value));
    EXPECT_EQ(value, -20.0);
    EXPECT_FALSE(reader->GetNextFloat(value));
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
}

TEST(RealNumber, MayHaveAMillionDigits) {
    const std::string digits(1'000'000, '3');
    const auto reader =
        Load("0." + digits + " " + digits + " 1" + std::string(1'000'000, '0') + "e-1000000");
    double value = 0.0;
    EXPECT_TRUE(reader->GetNextFloat(value));
    EXPECT_EQ(value, 1.0 / 3.0);
    EXPECT_TRUE(reader->GetNextFloat(value));
    EXPECT_EQ(value, kInfinity);
    EXPECT_TRUE(reader->GetNextFloat(value));
    EXPECT_EQ(value, 1.0);
}

struct WholeRow {
    const char* name;
    std::string token;
    bool accepted;
    int value;
};
std::ostream& operator<<(std::ostream& out, const WholeRow& row) {
    return out << row.name;
}

const WholeRow kWholeRows[] = {
    {"One", "1", true, 1},
    {"Negative", "-3", true, -3},
    {"Plus", "+4", true, 4},
    {"Tail", "12abc", true, 12},
    {"FractionIsATail", "2.9", true, 2},
    {"ExponentIsATail", "5e3", true, 5},
    {"LeadingZeros", "0012", true, 12},
    {"FormFeedFirst", "\f6", true, 6},
    {"Largest", "2147483647", true, std::numeric_limits<int>::max()},
    {"Smallest", "-2147483648", true, std::numeric_limits<int>::min()},
    {"Zero", "0", true, 0},
    {"MinusZero", "-0", true, 0},
    {"HexadecimalPrefix", "0x", true, 0},
    {"HexadecimalIsZero", "0x10", true, 0},
    {"ZeroFraction", "0.9", true, 0},
    {"MinusZeroFraction", "-0.9", true, 0},
    // The C library reads 64 bits, of which the lower 32 are used.
    {"ThirtyThreeBits", "4294967297", true, 1},
    {"NegativeByBits", "4294967295", true, -1},
    {"BeyondSixtyFourBits", "99999999999999999999", true, -1},
    {"Low32BitsAreZero", "4294967296", false, 0},
    {"SmallestOfSixtyFourBits", "-99999999999999999999", false, 0},
    {"PlusZero", "+0", false, 0},
    {"Word", "x0", false, 0},
    {"Minus", "-", false, 0},
    {"PointFirst", ".5", false, 0},
    {"NotANumber", "nan", false, 0},
    {"Infinity", "inf", false, 0},
    {"Brace", "{", false, 0},
    {"FormFeedZero", "\f0", false, 0},
    {"FullWidthDigit", "\xEF\xBC\x91", false, 0},
};

class WholeNumber : public testing::TestWithParam<WholeRow> {};

TEST_P(WholeNumber, IsReadAsTheCLibraryReadsIt) {
    const WholeRow& row = GetParam();
    for (const char* after : {"", " ", "\n7"}) {
        const auto reader = Load(" " + row.token + after);
        int value = 777;
        EXPECT_EQ(reader->GetNextInt(value), row.accepted);
        EXPECT_EQ(value, row.accepted ? row.value : 777);
        EXPECT_EQ(reader->GetPosition(), row.accepted ? 1 + row.token.size() : 0);
        EXPECT_EQ(textio::ToInt(row.token.c_str()), std::atoi(row.token.c_str()));
    }
}

INSTANTIATE_TEST_SUITE_P(, WholeNumber, testing::ValuesIn(kWholeRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Numbers, ThatAreMissingMoveThePositionToTheEndOfTheFile) {
    const auto reader = Load("word \n ");
    reader->GetNextString();
    int whole = 5;
    double real = 5.0;
    EXPECT_FALSE(reader->GetNextInt(whole));
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
    ASSERT_TRUE(reader->SetPosition(4));
    EXPECT_FALSE(reader->GetNextFloat(real));
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
    EXPECT_EQ(whole, 5);
    EXPECT_EQ(real, 5.0);
}

// An error about a refused number names the position from which the reader looked for it.
TEST(Numbers, ThatAreRefusedLeaveThePositionBeforeTheSeparators) {
    const auto reader = Load("OFFSET\n\n  up");
    reader->GetNextString();
    double real = 0.0;
    int whole = 0;
    EXPECT_FALSE(reader->GetNextFloat(real));
    EXPECT_EQ(reader->GetPosition(), 6u);
    EXPECT_EQ(reader->GetCurrentLine(), 0u);
    EXPECT_FALSE(reader->GetNextInt(whole));
    EXPECT_EQ(reader->GetPosition(), 6u);
}

TEST(PlainDecimal, LeavesOtherNumbersToTheCLibrary) {
    for (const std::string text :
         {"", "-", "+1", "0", "-0.0", "inf", "nan", "x", " 1", "1e400", "e5"}) {
        double value = kUntouched;
        EXPECT_EQ(textio::ReadPlainDecimal(text.data(), text.data() + text.size(), value), nullptr)
            << text;
        EXPECT_EQ(value, kUntouched) << text;
    }
}

TEST(PlainDecimal, EndsWhereTheNumberEnds) {
    const std::string text = "-12.5e1 7";
    double value = 0.0;
    EXPECT_EQ(textio::ReadPlainDecimal(text.data(), text.data() + text.size(), value),
              text.data() + 7);
    EXPECT_EQ(value, -125.0);
}

}  // namespace
