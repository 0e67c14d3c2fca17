#include "survey/amc_matches.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace amc_matches_test {

const std::string kFirst = "1\nroot 1 2 3\narm 4\n";

// Walks over the text as the reader does: from frame to frame, and past a frame that does not match
// to the next line. Compares each result with that of AmcScan.
void ExpectSame(const std::string& text) {
    survey::AmcFrame first;
    survey::AsfSkeleton skeleton;
    const survey::AmcBones bones(skeleton);
    survey::AmcFrameReader(kFirst, bones).Read(kFirst.data(), first);
    survey::AmcScan scan(text);
    scan.Learn(first);
    for (const std::size_t threads : {1, 2, 5}) {
        for (std::size_t part = 1; part <= text.size() + 1; ++part) {
            const survey::AmcMatches::Sizes sizes{3 * part, part};
            survey::AmcMatches matches(scan, text, threads, sizes);
            const char* const end = text.data() + text.size();
            for (const char* at = text.data(); at < end;) {
                std::uint32_t expectedNumber = 0;
                std::uint32_t number = 0;
                const char* const expected = scan.MatchFrame(at, expectedNumber);
                ASSERT_EQ(matches.MatchFrame(at, number), expected) << text << part;
                if (expected != nullptr) {
                    ASSERT_EQ(number, expectedNumber) << text << part;
                }
                at = expected != nullptr ? expected : at + 1;
                while (expected == nullptr && at < end && at[-1] != '\n')
                    ++at;
            }
        }
    }
}

struct Case {
    const char* name;
    std::string text;
};

const Case kCases[] = {
    {"Nothing", ""},
    {"OneFrame", kFirst},
    {"Frames", kFirst + "2\nroot -1 2.5 3\narm 4\n3\nroot 1 2 3\narm 1e-5\n"},
    {"LineEndsOfBothKinds", kFirst + "2\r\nroot 1 2 3\r\narm 4\r\n3\nroot 1 2 3\narm 4\n"},
    {"Comment", kFirst + "# 2\n2\nroot 1 2 3\narm 4\n3\nroot 1 2 3\narm 4"},
    {"OtherRow", kFirst + "2\nroot 1 2 3\nleg 4\n3\nroot 1 2 3\narm 4\n"},
    {"TooFewValues", kFirst + "2\nroot 1 2\narm 4\n3\nroot 1 2 3\narm 4\n"},
    {"ValueOnTheNextLine", kFirst + "2\nroot 1 2\n3\narm 4\n3\nroot 1 2 3\narm 4\n"},
    {"BlankLines", kFirst + "\n \n2\nroot 1 2 3\narm 4\n\n"},
    {"NoLineFeeds", "1 root 1 2 3 arm 4 2 root 1 2 3 arm 4"},
    {"LongNumber", kFirst + "2\nroot 0." + std::string(90, '1') + " 2 3\narm 4\n"},
};

class AmcMatches : public testing::TestWithParam<Case> {};

TEST_P(AmcMatches, AreThoseOfTheScan) {
    ExpectSame(GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(, AmcMatches, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

TEST(AmcMatchesRandom, AreThoseOfTheScan) {
    std::mt19937 random(2);
    const std::string odd = "-.#:x\n\r 7r";
    for (int round = 0; round < 100; ++round) {
        std::string text;
        for (std::size_t frame = 1 + random() % 8; frame > 0; --frame)
            text += std::to_string(random() % 200) + "\nroot " + std::to_string(random() % 99) +
                    " -1.5 3\narm 4\n";
        for (std::size_t change = random() % 3; change > 0; --change)
            text[random() % text.size()] = odd[random() % odd.size()];
        ExpectSame(text);
    }
}

}  // namespace amc_matches_test
