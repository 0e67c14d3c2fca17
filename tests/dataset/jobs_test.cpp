#include "dataset/jobs.h"

#include <filesystem>
#include <gmock/gmock.h>

#include "dataset/request.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;

class Jobs : public testing::Test {
  protected:
    void Make(const std::vector<std::string>& names) const {
        for (const std::string& name : names)
            folder_.Write(name, "");
    }

    // Returns "skeleton + source > output" or "source ! refusal" for each job, without the path of
    // folder_.
    std::vector<std::string> List(const std::vector<std::string>& names,
                                  const std::string& extension = ".glb",
                                  const std::string& skeleton = "") const {
        dataset::Request request;
        for (const std::string& name : names)
            request.paths.push_back(folder_.Path(name));
        request.formats = {{extension}};
        request.outDir = folder_.Path(outDir_);
        if (!skeleton.empty()) request.skeleton = folder_.Path(skeleton);
        std::vector<std::string> list;
        for (const dataset::Job& job : dataset::ListJobs(request)) {
            std::string text = job.skeleton.empty() ? "" : Short(job.skeleton) + " + ";
            text += Short(job.source);
            text += job.refusal.empty() ? " > " + job.outputs.front() : " ! " + Short(job.refusal);
            list.push_back(text);
        }
        return list;
    }
    std::string Short(std::string text) const {
        const std::size_t index = text.find(folder_.Path(""));
        return index == std::string::npos ? text : text.erase(index, folder_.Path("").size());
    }

    support::TemporaryFolder folder_;
    std::string outDir_ = "out";
};

TEST_F(Jobs, PairMotionsWithTheSkeletonsOfTheirFolders) {
    Make({"t/07/07.asf", "t/07/07_01.amc", "t/07/07_02.amc", "t/one/s.asf", "t/one/take.amc",
          "t/walk.bvh"});
    EXPECT_THAT(List({"t"}), ElementsAre("t/07/07.asf + t/07/07_01.amc > 07/07_01.glb",
                                         "t/07/07.asf + t/07/07_02.amc > 07/07_02.glb",
                                         "t/one/s.asf + t/one/take.amc > one/take.glb",
                                         "t/walk.bvh > walk.glb"));
}

TEST_F(Jobs, PairAMotionThatIsNamedAlone) {
    Make({"t/07.asf", "t/08.asf", "t/07_01.amc"});
    EXPECT_THAT(List({"t/07_01.amc"}), ElementsAre("t/07.asf + t/07_01.amc > 07_01.glb"));
    EXPECT_THAT(List({"t/07.asf", "t/07_01.amc"}),
                ElementsAre("t/07.asf + t/07_01.amc > 07_01.glb"));
}

TEST_F(Jobs, ImportASkeletonAloneIfNoMotionIsPairedWithIt) {
    Make({"t/07.asf", "t/08.asf", "t/07_01.amc"});
    EXPECT_THAT(List({"t"}),
                ElementsAre("t/07.asf + t/07_01.amc > 07_01.glb", "t/08.asf > 08.glb"));
    EXPECT_THAT(List({"t/07.asf"}), ElementsAre("t/07.asf > 07.glb"));
}

TEST_F(Jobs, RefuseAMotionWithoutSkeleton) {
    Make({"t/a.amc", "u/a.asf", "u/b.asf", "u/x.amc"});
    EXPECT_THAT(List({"t"}),
                ElementsAre("t/a.amc ! no skeleton: the motion's folder has no .asf file; "
                            "name one with --asf FILE"));
    EXPECT_THAT(
        List({"u/x.amc"}),
        ElementsAre("u/x.amc ! no skeleton: none of the 2 .asf files in the motion's folder "
                    "fits the motion's name; choose one with --asf FILE"));
}

TEST_F(Jobs, GiveEveryMotionTheSkeletonThatIsNamed) {
    Make({"s.asf", "t/07.asf", "t/07_01.amc", "t/x.amc"});
    EXPECT_THAT(List({"t"}, ".glb", "s.asf"),
                ElementsAre("t/07.asf > 07.glb", "s.asf + t/07_01.amc > 07_01.glb",
                            "s.asf + t/x.amc > x.glb"));
    EXPECT_THROW(List({"t"}, ".glb", "none.asf"), dataset::RequestError);
}

TEST_F(Jobs, RefuseToOverwriteAnInput) {
    Make({"t/walk.bvh", "u/run.bvh", "out/x"});
    std::filesystem::create_symlink("../u/run.bvh", folder_.Path("out/run.bvh"));
    EXPECT_THAT(List({"u/run.bvh"}, ".bvh"),
                ElementsAre("u/run.bvh ! its output would overwrite u/run.bvh"));
    outDir_ = "t";
    EXPECT_THAT(List({"t/walk.bvh"}, ".bvh"),
                ElementsAre("t/walk.bvh ! its output would overwrite t/walk.bvh"));
    EXPECT_THAT(List({"t"}, ".glb"), ElementsAre("t/walk.bvh > walk.glb"));
}

TEST_F(Jobs, RefuseOutputsThatTheNextRunWouldRead) {
    Make({"t/07.asf", "t/07_01.amc"});
    outDir_ = "t";
    EXPECT_THAT(List({"t"}, ".bvh"),
                ElementsAre("t/07.asf + t/07_01.amc ! its output would be in an input folder and "
                            "become an input of the next run"));
    outDir_ = "t/out";
    EXPECT_THAT(List({"t"}, ".bvh"), ElementsAre("t/07.asf + t/07_01.amc > 07_01.bvh"));
    Make({"t/out/x"});
    EXPECT_THAT(List({"t"}, ".bvh"), ElementsAre("t/07.asf + t/07_01.amc > 07_01.bvh"));
}

TEST_F(Jobs, AreTheSameForPathsInAnyOrder) {
    Make({"a/w.bvh", "b/w.bvh", "b/v.bvh"});
    EXPECT_THAT(List({"a", "b"}),
                ElementsAre("a/w.bvh ! its output w.bvh.glb would collide with that of b/w.bvh",
                            "b/v.bvh > v.glb", testing::StartsWith("b/w.bvh ! its output")));
    EXPECT_EQ(List({"a", "b"}), List({"b", "a"}));
}

TEST_F(Jobs, CannotBeAnEmptyList) {
    Make({"t/notes.txt"});
    EXPECT_THROW(List({"t"}), dataset::RequestError);
}

}  // namespace
