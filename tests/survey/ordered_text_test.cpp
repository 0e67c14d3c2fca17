#include "survey/ordered_text.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

#include "threads/for_each.h"

namespace ordered_text_test {

TEST(OrderedText, KeepsTheOrderOfTheParts) {
    std::string expected = "begin ";
    for (std::size_t part = 0; part < 500; ++part)
        expected += std::to_string(part) + ' ';
    for (const std::size_t threads : {1, 2, 5}) {
        std::string text = "begin ";
        survey::OrderedText ordered(text);
        threads::ForEach(500, threads, [&](std::size_t part) {
            ordered.Append(part, std::to_string(part) + ' ');
        });
        ordered.Finish();
        EXPECT_EQ(text, expected);
    }
}

TEST(OrderedText, PassesOnTheFirstFailure) {
    for (const std::size_t threads : {1, 2, 5}) {
        std::string text;
        survey::OrderedText ordered(text);
        threads::ForEach(100, threads, [&](std::size_t part) {
            try {
                if (part >= 40) throw std::runtime_error(std::to_string(part));
                ordered.Append(part, ".");
            } catch (...) {
                ordered.Fail(part);
            }
        });
        try {
            ordered.Finish();
            FAIL() << "Finish threw nothing";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(std::string(error.what()), "40");
        }
        EXPECT_EQ(text, std::string(40, '.'));
    }
}

}  // namespace ordered_text_test
