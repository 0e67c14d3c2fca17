// Runs the checks of the fuzzers for some seconds, from fixed seeds.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/fuzz/acclaim_check.h"
#include "tests/fuzz/bvh_check.h"
#include "tests/fuzz/grammar_mutator.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/survey_check.h"
#include "tests/support/acclaim/acclaim_random.h"
#include "tests/support/bvh_random.h"

namespace {

using fuzz::Grammar;

constexpr std::uint32_t kSeeds = 400;
constexpr std::uint32_t kMutations = 8;
constexpr std::size_t kCapacity = 4000;

// Each mutated file is mutated again, so that changes add up.
template <class Make, class Check>
void RunSeeds(Grammar grammar, const Make& make, const Check& check) {
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        std::string text = make(seed);
        const std::string donor = make(seed + kSeeds);
        for (std::uint32_t mutation = 0; mutation < kMutations; ++mutation) {
            text = fuzz::Mutate(text, donor, grammar, seed * kMutations + mutation, kCapacity);
            SCOPED_TRACE("seed " + std::to_string(seed) + ", mutation " + std::to_string(mutation));
            try {
                check(seed + mutation, text);
            } catch (const fuzz::RequirementFailed& failure) {
                FAIL() << failure.what() << "\n" << text;
            }
        }
    }
}

TEST(MutatedBvh, IsImportedOrRefused) {
    RunSeeds(
        Grammar::Bvh, [](std::uint32_t seed) { return support::RandomBvh(seed); },
        [](std::uint32_t options, const std::string& text) {
            fuzz::CheckBvh(static_cast<char>('@' + options % 32) + text);
        });
}

TEST(MutatedAcclaim, IsImportedOrRefused) {
    RunSeeds(
        Grammar::Acclaim,
        [](std::uint32_t seed) {
            const support::AcclaimTexts texts = support::RandomAcclaim(seed);
            return texts.asf + '~' + texts.amc;
        },
        [](std::uint32_t options, const std::string& text) {
            fuzz::CheckAcclaim(std::string{static_cast<char>('@' + options % 32),
                                           static_cast<char>('@' + options / 32 % 16)} +
                               text);
        });
}

TEST(MutatedBvh, IsSurveyedAndThenImported) {
    RunSeeds(
        Grammar::Bvh, [](std::uint32_t seed) { return support::RandomBvh(seed); },
        [](std::uint32_t options, const std::string& text) {
            fuzz::CheckBvhSurvey(static_cast<char>('@' + options % 32) + text);
        });
}

TEST(MutatedAcclaim, IsSurveyedAndThenImported) {
    RunSeeds(
        Grammar::Acclaim,
        [](std::uint32_t seed) {
            const support::AcclaimTexts texts = support::RandomAcclaim(seed);
            return texts.asf + '~' + texts.amc;
        },
        [](std::uint32_t options, const std::string& text) {
            fuzz::CheckAcclaimSurvey(static_cast<char>('@' + options % 32) + text);
        });
}

TEST(GrammarMutator, GivesTheSameTextForTheSameSeed) {
    const std::string text = support::RandomBvh(1);
    const std::string donor = support::RandomBvh(2);
    EXPECT_EQ(fuzz::Mutate(text, donor, Grammar::Bvh, 7, kCapacity),
              fuzz::Mutate(text, donor, Grammar::Bvh, 7, kCapacity));
}

// Most mutations must change the text, or the tests above prove little.
TEST(GrammarMutator, ChangesTheTextWithinTheCapacity) {
    const std::string text = support::RandomBvh(3);
    std::uint32_t changed = 0;
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        const std::string mutated = fuzz::Mutate(text, text, Grammar::Bvh, seed, text.size() + 10);
        EXPECT_LE(mutated.size(), text.size() + 10);
        changed += mutated != text ? 1 : 0;
    }
    EXPECT_GT(changed, 500u);
}

TEST(GrammarMutator, AcceptsAnEmptyText) {
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        fuzz::Mutate("", "", Grammar::Acclaim, seed, 100);
        EXPECT_LE(fuzz::Mutate("", "a b", Grammar::Acclaim, seed, 100).size(), 100u);
    }
}

}  // namespace
