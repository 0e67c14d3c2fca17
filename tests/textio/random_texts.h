// Random texts of numbers, from a fixed seed: usual and unusual numbers, and texts that only look
// like numbers. No text has a separator in it.
#pragma once

#include <bit>
#include <cstdint>
#include <cstdio>
#include <random>
#include <string>

namespace textio_test {

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

}  // namespace textio_test
