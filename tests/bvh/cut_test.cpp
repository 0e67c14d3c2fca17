// Files that are cut after each of their bytes, files with one byte changed, and files of random
// tokens.
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

// Imports any bytes and checks that the outcome is a known one and the scene is sound.
class AnyImport {
  public:
    AnyImport() {
        for (const auto& row : bvh_test::kBadFiles)
            parserMessages_.insert(row.message);
    }

    // Returns whether the import succeeded.
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
        // Only complete sections count; the scene may also have the model of an incomplete one.
        EXPECT_LE(importer.GetModelsCount(), bvh_test::Scene().Models().size());
        return imported;
    }

  private:
    static void ExpectKnownFailure(const Importer& importer, const std::string& status) {
        // An animated joint without children has no bone that its curves could drive.
        if (status == "0x80020003") {
            EXPECT_EQ(importer.Message(), "Failed to add channel FCurve");
            return;
        }
        bool isKnown = false;
        for (const auto& row : bvh_test::kFailedImports)
            isKnown |= status == row.status && importer.Message() == row.message;
        EXPECT_TRUE(isKnown) << status << ' ' << importer.Message();
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

TEST_P(CutBvh, IsImportedOrRefusedAfterEachByte) {
    const std::string& text = GetParam().text;
    AnyImport any;
    for (const Options& options : kAllOptions) {
        std::size_t imported = 0;
        for (std::size_t length = 0; length <= text.size(); ++length) {
            SCOPED_TRACE(length);
            imported += any.Run(text.substr(0, length), options);
            if (HasFailure()) return;
        }
        // At least the whole file, the file without its last line feed and the hierarchy alone are
        // imported.
        EXPECT_GE(imported, 3u);
        EXPECT_LT(imported, text.size() / 4);
    }
}

INSTANTIATE_TEST_SUITE_P(, CutBvh, testing::ValuesIn(kCutRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ChangedBvh, IsImportedOrRefusedWithOneByteChanged) {
    AnyImport any;
    std::mt19937 random(3);
    for (const std::string& text : {bvh_test::kChain, bvh_test::kTree}) {
        for (std::size_t index = 0; index < text.size(); ++index) {
            for (const char replacement : {'\0', ' ', '}', '9', '-', '\xFF'}) {
                std::string changed = text;
                changed[index] = replacement;
                const Options& options = kAllOptions[random() % std::size(kAllOptions)];
                SCOPED_TRACE(index);
                any.Run(changed, options);
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

TEST(ChangedBvh, IsImportedOrRefusedWithRandomTokens) {
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
