#include "text/json_text.h"

#include <bit>
#include <cmath>
#include <gmock/gmock.h>
#include <limits>
#include <nlohmann/json.hpp>
#include <random>

#include "text/wide_text.h"

namespace {

std::string Number(double number) {
    std::string text;
    text::AppendJsonNumber(text, number);
    return text;
}

std::string String(std::wstring_view value) {
    std::string text;
    text::AppendJsonString(text, value);
    return text;
}

TEST(JsonNumber, IsNeverAnInteger) {
    EXPECT_EQ(Number(0.0), "0.0");
    EXPECT_EQ(Number(5.0), "5.0");
    EXPECT_EQ(Number(-0.0), "-0.0");
    EXPECT_EQ(Number(0.1), "0.1");
    EXPECT_EQ(Number(1e300), "1e+300");
}

TEST(JsonNumber, NamesNumbersThatAreNotFinite) {
    EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()), "\"nan\"");
    EXPECT_EQ(Number(-std::numeric_limits<double>::quiet_NaN()), "\"nan\"");
    EXPECT_EQ(Number(HUGE_VAL), "\"inf\"");
    EXPECT_EQ(Number(-HUGE_VAL), "\"-inf\"");
}

TEST(JsonNumber, ReadsBackToTheSameBits) {
    std::mt19937_64 random(20);
    std::vector<double> numbers = {-0.0, 5e-324, 1.7976931348623157e308, 1.0 / 3.0,
                                   9007199254740993.0};
    while (numbers.size() < 20000) {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number)) numbers.push_back(number);
    }
    for (const double number : numbers) {
        const auto read = nlohmann::json::parse(Number(number));
        ASSERT_TRUE(read.is_number_float()) << Number(number);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(read.get<double>()),
                  std::bit_cast<std::uint64_t>(number))
            << Number(number);
    }
}

TEST(JsonString, IsReadBackByAParser) {
    std::wstring all;
    for (wchar_t character = 1; character < 0x800; ++character)
        all += character;
    EXPECT_EQ(nlohmann::json::parse(String(all)), nlohmann::json(text::EncodeUtf8(all)));
}

TEST(JsonString, IsQuotedUtf8) {
    EXPECT_EQ(String(L""), "\"\"");
    EXPECT_EQ(String(L"a\"b\\c\n\x01"), "\"a\\\"b\\\\c\\n\\u0001\"");
    EXPECT_EQ(String(L"\b\f\r\t\x1F\x7F"), "\"\\b\\f\\r\\t\\u001f\x7F\"");
    EXPECT_EQ(String(L"\x6B69"), "\"\xE6\xAD\xA9\"");
    EXPECT_EQ(String(std::wstring(1, wchar_t(0xDC80))), "\"\xEF\xBF\xBD\"");
}

}  // namespace
