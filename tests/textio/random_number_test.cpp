// Compares the numbers that are read with those of the C library, for random texts from a fixed
// seed.
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/core/comma_locale.h"
#include "tests/textio/loaded.h"
#include "tests/textio/random_texts.h"

namespace {

constexpr std::size_t kTexts = 120'000;

struct Expected {
    std::string text;
    double value;
};

std::vector<Expected> Texts() {
    textio_test::TextMaker maker;
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
