// Compares the numbers that are read with those of the C library, for random texts from a fixed
// seed.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "tests/support/core/comma_locale.h"
#include "tests/textio/loaded.h"

namespace {

constexpr std::size_t kTexts = 120'000;

class TextMaker {
  public:
    std::string Next() {
        switch (Below(8)) {
            case 0:
                return Printed("%.17g", AnyBits());
            case 1:
                return Printed("%a", AnyBits());
            case 2:
                return Printed(Below(2) == 0 ? "%.6f" : "%.4f", Angle());
            case 3:
                return Printed("%g", AnyBits());
            case 4:
                return Sign() + Digits(1 + Below(25)) + '.' + Digits(Below(25));
            case 5:
                return Sign() + Digits(1 + Below(20)) + 'e' + Sign() + Digits(1 + Below(3));
            case 6:
                return Printed("%.16e", LargeWhole()) + Tail();
            default:
                return Garbage();
        }
    }

  private:
    std::uint32_t Below(std::uint32_t n) { return static_cast<std::uint32_t>(random_() % n); }
    double AnyBits() { return std::bit_cast<double>(random_()); }
    double Angle() { return (static_cast<double>(Below(2'000'001)) / 1e6 - 1.0) * 360.0; }
    // A whole number from 2^53 on, where neighbouring doubles differ by 2.
    double LargeWhole() { return 9007199254740992.0 + 2.0 * Below(1000); }

    std::string Sign() {
        static constexpr const char* kSigns[] = {"", "", "-", "+"};
        return kSigns[Below(4)];
    }
    std::string Digits(std::uint32_t count) {
        std::string digits;
        for (; count > 0; --count)
            digits += static_cast<char>('0' + Below(10));
        return digits;
    }
    std::string Tail() {
        static constexpr const char* kTails[] = {"", "", "f", "e", ",5", "}", ".1"};
        return kTails[Below(7)];
    }
    std::string Garbage() {
        static constexpr char kCharacters[] = "0011259.-+eExXpinfNa,_(";
        std::string text;
        for (std::uint32_t count = 1 + Below(9); count > 0; --count)
            text += kCharacters[Below(sizeof(kCharacters) - 1)];
        return text;
    }
    template <class Format>
    std::string Printed(Format format, double value) {
        char text[64];
        const std::string pattern = format;
        std::snprintf(text, sizeof(text), pattern.c_str(), value);
        return text;
    }

    std::mt19937_64 random_{20240229};
};

struct Expected {
    std::string text;
    double value;
};

std::vector<Expected> Texts() {
    TextMaker maker;
    std::vector<Expected> texts;
    for (std::size_t i = 0; i < kTexts; ++i) {
        std::string text = maker.Next();
        const double value = std::strtod(text.c_str(), nullptr);
        texts.push_back({std::move(text), value});
    }
    return texts;
}

void ExpectAll(CStringFile& reader, const std::vector<Expected>& texts) {
    std::size_t accepted = 0;
    for (const auto& [text, expected] : texts) {
        const bool zeroFirst = text.starts_with("0") || text.starts_with("-0");
        const bool accepts = expected != 0.0 || zeroFirst;
        const std::uint32_t before = reader.GetPosition();
        double value = 12345.0;
        ASSERT_EQ(reader.GetNextFloat(value), accepts) << text;
        if (!accepts) {
            ASSERT_EQ(reader.GetPosition(), before) << text;
            ASSERT_EQ(reader.GetNextString(), text);
            continue;
        }
        ++accepted;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected))
            << text;
    }
    EXPECT_EQ(reader.GetNextString(), nullptr);
    // Enough texts were accepted, and some were refused.
    EXPECT_GT(accepted, kTexts / 2);
    EXPECT_LT(accepted, kTexts);
}

TEST(RandomNumbers, EqualThoseOfTheCLibraryToTheBitInBothLocales) {
    const std::vector<Expected> texts = Texts();
    std::string file;
    for (const Expected& expected : texts)
        file += expected.text + '\n';
    ExpectAll(*textio_test::Load(file), texts);

    const support::CommaLocale comma;
    ASSERT_EQ(comma.Problem(), "");
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5) << "the locale has no decimal comma";
    ExpectAll(*textio_test::Load(file), texts);
}

}  // namespace
