// Compares the stand-in for std::to_chars with the original.
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <system_error>

#include "text/to_chars_stand_in.h"

namespace {

void ExpectSame(double number) {
    char expected[64];
    char actual[64];
    const auto original = std::to_chars(expected, expected + sizeof expected, number);
    const auto standIn = text::stand_ins::to_chars(actual, actual + sizeof actual, number);
    ASSERT_EQ(standIn.ec, std::errc());
    ASSERT_EQ(std::string(actual, standIn.ptr), std::string(expected, original.ptr));
}

TEST(ToCharsStandIn, WritesWhatTheStandardOneWrites) {
    using Limits = std::numeric_limits<double>;
    for (const double number :
         {0.0, 1.0, 0.1, 0.001, 0.0001, 0.00012, 12345.0, 100000.0, 123456e5, 1e15, 1e22, 1e23,
          9007199254740993.0, 123456789012345678901.0, Limits::max(), Limits::min(),
          Limits::denorm_min(), Limits::infinity(), Limits::quiet_NaN()}) {
        ExpectSame(number);
        ExpectSame(-number);
    }
}

TEST(ToCharsStandIn, WritesAnyNumberTheSame) {
    std::mt19937_64 random(1);
    for (int count = 0; count < 50'000; ++count) {
        ExpectSame(std::bit_cast<double>(random()));
        ExpectSame(
            std::ldexp(static_cast<double>(random() >> 11), -static_cast<int>(random() % 70)));
    }
}

TEST(ToCharsStandIn, WritesPowersAndShortNumbersTheSame) {
    for (int exponent = -1074; exponent < 1024; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        ExpectSame(power);
        ExpectSame(std::nextafter(power, 0.0));
    }
    for (int exponent = -30; exponent < 30; ++exponent)
        for (int digits = 1; digits < 200; ++digits)
            ExpectSame(digits * std::pow(10.0, exponent));
}

TEST(ToCharsStandIn, WritesNothingWithoutRoom) {
    char out[] = "abcd";
    const auto [end, error] = text::stand_ins::to_chars(out, out + 3, -0.25);
    EXPECT_EQ(error, std::errc::value_too_large);
    EXPECT_EQ(end, out + 3);
    EXPECT_STREQ(out, "abcd");
    EXPECT_EQ(text::stand_ins::to_chars(out, out + 4, 0.25).ptr, out + 4);
}

}  // namespace
