#include "export/progress.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <vector>

#include "export/formats.h"
#include "files/write_file.h"
#include "tests/export/exported.h"
#include "tests/support/temporary_folder.h"

namespace {

using exporters::Progress;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Progress, ReportsToNobodyByDefault) {
    const Progress progress;
    progress.Report(0, 1);
    progress.Between(0.5, 1.0).Part(1, 2).Report(0, 1);
}

TEST(Progress, OfAPartIsAShareOfTheWhole) {
    std::vector<double> shares;
    const Progress progress([&](double share) { shares.push_back(share); });
    progress.Report(0, 4);
    progress.Report(1, 4);
    progress.Between(0.5, 1.0).Report(1, 4);
    progress.Between(0.5, 1.0).Part(1, 2).Report(1, 2);
    EXPECT_THAT(shares, ElementsAre(0.0, 0.25, 0.625, 0.875));
}

TEST(Progress, LeavesOutMostPassesOfALongLoop) {
    std::size_t reports = 0;
    const Progress progress([&](double) { ++reports; });
    for (std::size_t pass = 0; pass < 1'000'000; ++pass)
        progress.Report(pass, 1'000'000);
    EXPECT_GT(reports, 100U);
    EXPECT_LT(reports, 1000U);
}

// Writes the current scene to "out" with the extension of the format.
files::WriteOutcome Write(const exporters::Format& format, const support::TemporaryFolder& folder,
                          const Progress& progress) {
    const headless::Session& session = headless::Session::Current();
    const exporters::RunRecord record{0, session.Log(), session.Bar(), session.Commands(), "{}"};
    const exporters::Options options;
    const exporters::Content content{session.GetScene(), options, &record, progress};
    exporters::Notes notes;
    const auto paths =
        exporters::FilesOf(format, folder.Path("out" + std::string(format.extension)));
    if (paths.size() == 1)
        return files::WriteFile(paths[0], [&](text::ByteSink& out) {
            return exporters::Write(format, content, {out}, notes);
        });
    return files::WriteFilePair(paths[0], paths[1], [&](text::ByteSink& out, text::ByteSink& side) {
        return exporters::Write(format, content, {out, &side, "out.bin"}, notes);
    });
}

// Two sections. In the first one, a joint other than the root moves. A writer of BVH files then
// evaluates the motion twice.
std::string TwoSections() {
    const auto section = [](const char* root, const char* channels, const char* row) {
        std::string text = std::string("HIERARCHY\nROOT ") + root +
                           "\n{\nOFFSET 0 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
                           "JOINT Knee\n{\nOFFSET 0 1 0\nCHANNELS " +
                           channels + "\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\n}\n" +
                           "MOTION\nFrames: 7\nFrame Time: 0.01\n";
        for (int frame = 0; frame < 7; ++frame)
            text += std::to_string(frame) + row;
        return text;
    };
    return section("Hips", "3 Xposition Yposition Zposition", " 2 3 4 5 6\n") +
           section("Waist", "1 Xrotation", " 2 3 4\n");
}

class ProgressOfFormat : public testing::TestWithParam<exporters::Format> {};

TEST_P(ProgressOfFormat, RisesWithinTheOutput) {
    ASSERT_TRUE(exported::ImportText(TwoSections()));
    const support::TemporaryFolder folder;
    std::vector<double> shares;
    const auto outcome =
        Write(GetParam(), folder, Progress([&](double share) { shares.push_back(share); }));
    EXPECT_TRUE(outcome.IsWritten()) << outcome.problem;
    ASSERT_GE(shares.size(), 7U);
    EXPECT_DOUBLE_EQ(shares.front(), 0.0);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_THAT(shares, Each(testing::Lt(1.0)));
    EXPECT_GT(shares.back(), 0.8);
}

// Cancels at the first report, then at the second one, and so on, until nothing is cancelled.
TEST_P(ProgressOfFormat, CancelsAtEveryReport) {
    ASSERT_TRUE(exported::ImportText(TwoSections()));
    const support::TemporaryFolder folder;
    std::size_t last = 1;
    for (;; ++last) {
        std::size_t reports = 0;
        const auto outcome = Write(GetParam(), folder, Progress([&](double) {
                                       if (++reports == last) throw text::WriteCancelled();
                                   }));
        if (outcome.IsWritten()) break;
        ASSERT_TRUE(outcome.isCancelled) << last;
        ASSERT_EQ(outcome.problem, "");
        ASSERT_EQ(reports, last) << "the exporter went on after it was cancelled";
        ASSERT_THAT(folder.Names(), IsEmpty()) << last;
    }
    EXPECT_GT(last, 7U);
    EXPECT_THAT(folder.Names(), SizeIs(GetParam().sideExtension.empty() ? 1 : 2));
}

INSTANTIATE_TEST_SUITE_P(, ProgressOfFormat, testing::ValuesIn(exported::WrittenFormats()),
                         [](const auto& row) {
                             return std::string(row.param.extension.substr(1));
                         });

}  // namespace
