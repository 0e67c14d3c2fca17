#include "dataset/capture_files.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include "dataset/request.h"
#include "tests/support/temporary_folder.h"

namespace {

using dataset::CaptureTree;
using dataset::FindCaptures;
using testing::ElementsAre;
using testing::IsEmpty;

class CaptureFiles : public testing::Test {
  protected:
    void Make(const std::string& name) const { folder_.Write(name, ""); }
    void Link(const std::string& target, const std::string& name) const {
        std::filesystem::create_symlink(target, folder_.Path(name));
    }

    // Returns "path -> relativePath" for each file that is found, both without the path of folder_.
    std::vector<std::string> Found(const std::vector<std::string>& names,
                                   const std::string& outDir = "none") const {
        std::vector<std::string> found;
        for (const dataset::CaptureFile& file : Tree(names, outDir).files)
            found.push_back(file.path.substr(folder_.Path("").size()) + " -> " + file.relativePath);
        return found;
    }
    CaptureTree Tree(const std::vector<std::string>& names, const std::string& outDir) const {
        std::vector<std::string> paths;
        for (const std::string& name : names)
            paths.push_back(folder_.Path(name));
        return FindCaptures(paths, folder_.Path(outDir));
    }

    support::TemporaryFolder folder_;
};

TEST_F(CaptureFiles, AreFoundInFolders) {
    for (const char* name :
         {"t/b.bvh", "t/07/07.ASF", "t/07/07_01.Amc", "t/notes.txt", "t/bvh", "t/07/deep/er/x.bvh"})
        Make(name);
    EXPECT_THAT(Found({"t"}),
                ElementsAre("t/07/07.ASF -> 07/07.ASF", "t/07/07_01.Amc -> 07/07_01.Amc",
                            "t/07/deep/er/x.bvh -> 07/deep/er/x.bvh", "t/b.bvh -> b.bvh"));
    EXPECT_EQ(Found({"t/"}), Found({"t"}));
}

TEST_F(CaptureFiles, AreSortedByPathWhateverTheOrderOfTheArguments) {
    for (const char* name : {"a/z.bvh", "b.bvh", "a-b/c.bvh"})
        Make(name);
    EXPECT_THAT(Found({"b.bvh", "a", "a-b"}),
                ElementsAre("a-b/c.bvh -> c.bvh", "a/z.bvh -> z.bvh", "b.bvh -> b.bvh"));
}

TEST_F(CaptureFiles, AreSkippedIfHiddenUnlessTheyAreNamed) {
    for (const char* name : {"t/.hidden/a.bvh", "t/._a.bvh", "t/.bvh", "t/a.bvh", ".b.bvh"})
        Make(name);
    EXPECT_THAT(Found({"t", ".b.bvh"}), ElementsAre(".b.bvh -> .b.bvh", "t/a.bvh -> a.bvh"));
}

TEST_F(CaptureFiles, AreListedOnceEvenIfFoundTwice) {
    Make("t/07/a.bvh");
    EXPECT_THAT(Found({"t", "t/07", "t/07/a.bvh", "t/./07/../07/a.bvh"}),
                ElementsAre("t/07/a.bvh -> 07/a.bvh"));
    EXPECT_THAT(Found({"t/07/a.bvh", "t"}), ElementsAre("t/07/a.bvh -> a.bvh"));
}

TEST_F(CaptureFiles, AreSkippedInTheOutputFolder) {
    for (const char* name : {"t/a.bvh", "t/out/a.bvh", "t/out/deep/b.bvh"})
        Make(name);
    EXPECT_THAT(Found({"t"}, "t/out"), ElementsAre("t/a.bvh -> a.bvh"));
    EXPECT_THAT(Found({"t/out"}, "t/out"),
                ElementsAre("t/out/a.bvh -> a.bvh", "t/out/deep/b.bvh -> deep/b.bvh"));
}

TEST_F(CaptureFiles, AreFoundThroughLinks) {
    Make("elsewhere/deep/a.bvh");
    Make("t/b.bvh");
    Link("../elsewhere", "t/link");
    Link("b.bvh", "t/c.bvh");
    EXPECT_THAT(Found({"t"}), ElementsAre("t/b.bvh -> b.bvh", "t/c.bvh -> c.bvh",
                                          "t/link/deep/a.bvh -> link/deep/a.bvh"));
}

TEST_F(CaptureFiles, AreFoundInTheirOwnFoldersBeforeLinks) {
    Make("t/z/a.bvh");
    Link("z", "t/a");
    EXPECT_THAT(Found({"t"}), ElementsAre("t/z/a.bvh -> z/a.bvh"));
}

TEST_F(CaptureFiles, AreFoundDespiteLoops) {
    Make("t/a/a.bvh");
    Link("..", "t/a/up");
    Link(".", "t/a/self");
    Link("loop", "t/loop");
    Link("../b", "t/a/b");
    Make("t/b/b.bvh");
    Link("../a", "t/b/a");
    EXPECT_THAT(Found({"t"}), ElementsAre("t/a/a.bvh -> a/a.bvh", "t/b/b.bvh -> b/b.bvh"));
}

TEST_F(CaptureFiles, AreProblemsWhereTheyCannotBeRead) {
    Make("t/a.bvh");
    Link("nowhere", "t/b.bvh");
    ASSERT_EQ(mkfifo(folder_.Path("t/c.bvh").c_str(), 0600), 0);
    const CaptureTree tree = Tree({"t"}, "none");
    EXPECT_EQ(tree.files.size(), 1u);
    ASSERT_EQ(tree.problems.size(), 2u);
    EXPECT_EQ(tree.problems[0].path, folder_.Path("t/b.bvh"));
    EXPECT_EQ(tree.problems[0].error, "No such file or directory");
    EXPECT_EQ(tree.problems[1].error, "not a regular file");
}

TEST_F(CaptureFiles, MustBeNamedByACapturesOrAFoldersPath) {
    Make("notes.txt");
    EXPECT_THROW(Tree({"notes.txt"}, "none"), dataset::RequestError);
    EXPECT_THROW(Tree({"none.bvh"}, "none"), dataset::RequestError);
    EXPECT_THROW(Tree({"none"}, "none"), dataset::RequestError);
}

TEST_F(CaptureFiles, AreFoundInDeepFolders) {
    std::string name = "t/";
    for (int level = 0; level < 300; ++level)
        name += "d/";
    Make(name + "a.bvh");
    EXPECT_EQ(Found({"t"}).size(), 1u);
}

TEST_F(CaptureFiles, NamesOfSkeletonsAreListed) {
    for (const char* name : {"t/b.asf", "t/a.ASF", "t/c.amc", "t/.d.asf", "t/e.asf/x"})
        Make(name);
    EXPECT_THAT(dataset::SkeletonsIn(folder_.Path("t/")), ElementsAre("a.ASF", "b.asf"));
    EXPECT_THAT(dataset::SkeletonsIn(folder_.Path("none/")), IsEmpty());
}

}  // namespace
