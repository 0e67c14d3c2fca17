// The arguments of "zkhost view", and the names of its pages.
#include <gmock/gmock.h>

#include "cli/arguments.h"
#include "cli/view_folder.h"
#include "export/page.h"

namespace view_test {

using testing::MatchesRegex;
using testing::SizeIs;

cli::ViewRequest Parse(const std::vector<const char*>& words) {
    return std::get<cli::ViewRequest>(cli::ParseArguments(words));
}

class View : public testing::Test {
  protected:
    void SetUp() override {
        if (!exporters::HasViewer()) GTEST_SKIP() << "this build has no viewer";
    }
};

TEST_F(View, MakesATakeOfEachFile) {
    const cli::ViewRequest request = Parse({"view", "a.bvh", "07.asf", "07_01.amc", "07_02.amc",
                                            "08.asf", "b.bvh", "09.asf", "--no-open", "--bones"});
    ASSERT_THAT(request.takes, SizeIs(6));
    const auto file = [&](std::size_t take) { return request.takes[take].take.file.path; };
    const auto motion = [&](std::size_t take) {
        return request.takes[take].take.motion ? request.takes[take].take.motion->path : "";
    };
    EXPECT_EQ(file(0), "a.bvh");
    EXPECT_EQ(file(1) + ' ' + motion(1), "07.asf 07_01.amc");
    EXPECT_EQ(file(2) + ' ' + motion(2), "07.asf 07_02.amc");
    EXPECT_EQ(file(3) + ' ' + motion(3), "08.asf ");
    EXPECT_EQ(file(4), "b.bvh");
    EXPECT_EQ(file(5) + ' ' + motion(5), "09.asf ");
    EXPECT_EQ(request.takes[0].take.format, take::Format::Biovision);
    EXPECT_EQ(request.takes[1].take.format, take::Format::Acclaim);
    EXPECT_FALSE(request.open);
    EXPECT_FALSE(request.takes[5].take.useNulls);
}

TEST_F(View, PassesOptionsToEveryTake) {
    const cli::ViewRequest request =
        Parse({"view", "a.bvh", "07.asf", "--preset=none", "--scale", "2", "--frames", "3:"});
    EXPECT_TRUE(request.open);
    for (const cli::ImportRequest& take : request.takes) {
        EXPECT_EQ(take.exports.scale, 2.0);
        EXPECT_EQ(take.exports.frames->first, 3);
    }
    EXPECT_THROW(Parse({"view", "a.bvh", "--preset", "none"}), cli::UsageError);
}

struct Row {
    const char* file;
    const char* name;  // a regular expression
};

TEST(PageName, IsPlain) {
    const Row rows[] = {
        {"walk.bvh", "walk-[0-9a-f]+\\.html"},
        {"takes/a b.bvh", "a_b-[0-9a-f]+\\.html"},
        {"07_01.amc", "07_01-[0-9a-f]+\\.html"},
        {".bvh", "\\.bvh-[0-9a-f]+\\.html"},
        {"<img src=x>&#%.bvh", "_img_src_x____-[0-9a-f]+\\.html"},
        {"\xC3\xA9t\xC3\xA9.bvh", "__t__-[0-9a-f]+\\.html"},
    };
    for (const Row& row : rows)
        EXPECT_THAT(cli::PageName(row.file, "key"), MatchesRegex(row.name)) << row.file;
    EXPECT_THAT(cli::PageName(std::string(300, 'a') + ".bvh", "key"), SizeIs(60 + 14));
}

TEST(PageName, IsThatOfTheFiles) {
    EXPECT_EQ(cli::PageName("walk.bvh", "one"), cli::PageName("walk.bvh", "one"));
    EXPECT_NE(cli::PageName("walk.bvh", "one"), cli::PageName("walk.bvh", "two"));
}

}  // namespace view_test
