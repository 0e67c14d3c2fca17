// Files that end too early, at every byte, and files with one byte changed.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <string>

#include "tests/bvh/bad_files.h"
#include "tests/bvh/import_failures.h"
#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"

namespace {

using bvh_test::Importer;
using bvh_test::kAllOptions;
using bvh_test::Options;
using support::StatusText;
using testing::IsEmpty;

// Whatever comes of any bytes at all.
class AnyImport {
  public:
    AnyImport() {
        for (const auto& row : bvh_test::kBadFiles)
            parserMessages_.insert(row.message);
    }

    // Whether it succeeded.
    bool Run(const std::string& bytes, const Options& options) {
        support::StartSession(true);
        Importer importer(options);
        const std::int32_t status = importer.Import(bytes);
        const bool imported = status == 0;
        EXPECT_THAT(support::SceneProblems(imported), IsEmpty());
        EXPECT_THAT(importer.Nodes(), IsEmpty());
        if (imported) {
            EXPECT_GT(importer.GetModelsCount(), 0u);
            EXPECT_TRUE(importer.GetLastMotion().IsValid());
        } else if (importer.WasParsing()) {
            EXPECT_EQ(StatusText(status), "0x80004005");
            EXPECT_EQ(parserMessages_.count(importer.Message()), 1u) << importer.Message();
        } else {
            ExpectKnownFailure(importer, StatusText(status));
        }
        // Only whole sections count, each with a model of its own.
        EXPECT_LE(importer.GetModelsCount(), bvh_test::Scene().Models().size());
        return imported;
    }

  private:
    static void ExpectKnownFailure(const Importer& importer, const std::string& status) {
        // An animated joint with nothing below it has no bone.
        if (status == "0x80020003") {
            EXPECT_EQ(importer.Message(), "Failed to add channel FCurve");
            return;
        }
        bool known = false;
        for (const auto& row : bvh_test::kFailedImports)
            known |= status == row.status && importer.Message() == row.message;
        EXPECT_TRUE(known) << status << ' ' << importer.Message();
    }

    std::set<std::string> parserMessages_;
};

struct CutRow {
    const char* name;
    std::string text;
};
std::ostream& operator<<(std::ostream& out, const CutRow& row) {
    return out << row.name;
}

const CutRow kCutRows[] = {
    {"Chain", bvh_test::kChain},
    {"Tree", bvh_test::kTree},
    {"Sections", bvh_test::kChain + bvh_test::kStill + bvh_test::kOneLine},
};

class CutBvh : public testing::TestWithParam<CutRow> {};

TEST_P(CutBvh, IsSurvivedAtEachByte) {
    const std::string& text = GetParam().text;
    AnyImport any;
    for (const Options& options : kAllOptions) {
        std::size_t imported = 0;
        for (std::size_t length = 0; length <= text.size(); ++length) {
            SCOPED_TRACE(length);
            imported += any.Run(text.substr(0, length), options);
            if (HasFailure()) return;
        }
        // The whole, the same without its last line feed, and the hierarchy alone are good.
        EXPECT_GE(imported, 3u);
        EXPECT_LT(imported, text.size() / 4);
    }
}

INSTANTIATE_TEST_SUITE_P(, CutBvh, testing::ValuesIn(kCutRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ChangedBvh, IsSurvivedWhateverOneByteBecomes) {
    AnyImport any;
    std::mt19937 random(3);
    for (const std::string& text : {bvh_test::kChain, bvh_test::kTree}) {
        for (std::size_t place = 0; place < text.size(); ++place) {
            for (const char replacement : {'\0', ' ', '}', '9', '-', '\xFF'}) {
                std::string changed = text;
                changed[place] = replacement;
                const Options& options = kAllOptions[random() % std::size(kAllOptions)];
                SCOPED_TRACE(place);
                any.Run(changed, options);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

TEST(ChangedBvh, IsSurvivedWithTokensShuffled) {
    AnyImport any;
    std::mt19937 random(4);
    static constexpr const char* kTokens[] = {
        "HIERARCHY", "ROOT",   "JOINT",     "End",       "Site",      "{",         "}",    "OFFSET",
        "CHANNELS",  "MOTION", "Frames:",   "Frame",     "Time:",     "Xrotation", "3",    "0",
        "1",         "-2",     "Yrotation", "Zposition", "Zrotation", "0.5",       "name", "nan"};
    for (int round = 0; round < 3000; ++round) {
        std::string text = "HIERARCHY ROOT A { OFFSET 0 1 0 ";
        for (auto count = random() % 20; count > 0; --count)
            text += std::string(kTokens[random() % std::size(kTokens)]) + ' ';
        SCOPED_TRACE(text);
        any.Run(text, kAllOptions[random() % std::size(kAllOptions)]);
        if (testing::Test::HasFailure()) return;
    }
}

}  // namespace
