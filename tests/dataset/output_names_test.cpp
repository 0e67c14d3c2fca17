#include "dataset/output_names.h"

#include <gmock/gmock.h>
#include <sstream>

namespace output_names_test {

using dataset::Job;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Row {
    const char* name;
    const char* extensions;  // of the formats, separated by spaces
    // The relative path of each source, and the expected outputs, separated by spaces. "!" followed
    // by a part of the reason means that the job is refused.
    std::vector<std::pair<const char*, const char*>> outputs;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    {"AnotherExtension", ".glb", {{"walk.bvh", "walk.glb"}, {"07/07_01.AMC", "07/07_01.glb"}}},
    {"ManyDots", ".csv", {{"a.b.bvh", "a.b.csv"}}},
    {"DotsInAFolderOnly", ".csv", {{"a.b/c.bvh", "a.b/c.csv"}}},
    {"OneNameTwoFormats",
     ".glb",
     {{"walk.amc", "walk.amc.glb"}, {"walk.bvh", "walk.bvh.glb"}, {"run.bvh", "run.glb"}}},
    {"OneNameInOtherCase", ".glb", {{"Walk.bvh", "Walk.bvh.glb"}, {"walk.amc", "walk.amc.glb"}}},
    {"CaseAlone", ".glb", {{"Walk.bvh", "!Walk.bvh.glb would"}, {"walk.BVH", "!walk.BVH.glb"}}},
    {"CaseBeyondAscii", ".glb", {{"É.bvh", "!collide"}, {"é.bvh", "!collide"}}},
    {"CaseOfFolders", ".glb", {{"A/w.bvh", "!collide"}, {"a/w.bvh", "!collide"}}},
    {"FoldersByCaseWithOtherNames", ".glb", {{"A/v.bvh", "A/v.glb"}, {"a/w.bvh", "a/w.glb"}}},
    {"SameRelativePathTwice", ".glb", {{"w.bvh", "!collide with that of"}, {"w.bvh", "!collide"}}},
    {"LongNameIsTaken",
     ".glb",
     {{"w.amc", "w.amc.glb"}, {"w.bvh", "!collide"}, {"w.bvh.bvh", "!collide"}}},
    {"Packed", ".glb", {{"a/walk.bvh.gz", "a/walk.glb"}, {"07_01.AMC.GZ", "07_01.glb"}}},
    {"PackedAndPlain", ".glb", {{"walk.bvh", "walk.bvh.glb"}, {"walk.bvh.gz", "walk.bvh.gz.glb"}}},
    {"PackedNameOfTheIndex", ".csv", {{"index.bvh.gz", "index.bvh.gz.csv"}}},
    {"NameOfTheIndex", ".csv", {{"Index.bvh", "Index.bvh.csv"}, {"a/index.bvh", "a/index.csv"}}},
    {"NameOfTheIndexWithAnotherExtension", ".glb", {{"index.bvh", "index.glb"}}},
    {"FolderOfOthers",
     ".glb",
     {{"w.bvh", "!a folder of other outputs"}, {"w.glb/v.bvh", "w.glb/v.glb"}}},
    {"FolderOfOthersInOtherCase",
     ".glb",
     {{"w.bvh", "!a folder"}, {"W.GLB/b/v.bvh", "W.GLB/b/v.glb"}}},
    {"FolderWithTheNameOfASecondFile",
     ".gltf",
     {{"w.bvh", "!w.bin is a folder"}, {"w.bin/v.bvh", "w.bin/v.gltf"}}},
    {"SeveralFormats", ".glb .npz", {{"walk.bvh", "walk.glb walk.npz"}}},
    {"SeveralFormatsOfOneName",
     ".glb .npz",
     {{"w.amc", "w.amc.glb w.amc.npz"}, {"w.bvh", "w.bvh.glb w.bvh.npz"}}},
    {"SeveralFormatsAndTheIndex", ".glb .csv", {{"index.bvh", "index.bvh.glb index.bvh.csv"}}},
    {"SeveralFormatsAndAFolder",
     ".glb .npz",
     {{"w.bvh", "!w.npz is a folder"}, {"w.npz/v.bvh", "w.npz/v.glb w.npz/v.npz"}}},
    {"SeveralFormatsByCaseAlone", ".glb .npz", {{"W.bvh", "!collide"}, {"w.BVH", "!collide"}}},
    {"FormatWithTheExtensionOfASecondFile", ".gltf .bin", {{"w.bvh", "!same file"}}},
};

// A .gltf has a .bin as its second file.
std::vector<dataset::OutputFormat> FormatsOf(const std::string& extensions) {
    std::vector<dataset::OutputFormat> formats;
    std::istringstream words(extensions);
    for (std::string extension; words >> extension;)
        formats.push_back({extension, extension == ".gltf" ? ".bin" : ""});
    return formats;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : " ") + name;
    return text;
}

class OutputNames : public testing::TestWithParam<Row> {};

TEST_P(OutputNames, AreAsExpected) {
    std::vector<Job> jobs;
    for (const auto& [relativePath, output] : GetParam().outputs)
        jobs.push_back({"source of " + std::string(relativePath), "", relativePath, {}, ""});
    dataset::NameOutputs(jobs, FormatsOf(GetParam().extensions));
    for (std::size_t index = 0; index < jobs.size(); ++index) {
        const std::string expected = GetParam().outputs[index].second;
        SCOPED_TRACE(jobs[index].relativePath);
        if (expected.starts_with('!')) {
            EXPECT_THAT(jobs[index].refusal, HasSubstr(expected.substr(1)));
        } else {
            EXPECT_THAT(jobs[index].refusal, IsEmpty());
            EXPECT_EQ(Joined(jobs[index].outputs), expected);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, OutputNames, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(NameOutputs, DoesNotNameTheOutputOfARefusedJob) {
    std::vector<Job> jobs = {{"a/w.bvh", "", "w.bvh", {}, ""}, {"b/w.bvh", "", "w.bvh", {}, "no"}};
    dataset::NameOutputs(jobs, FormatsOf(".glb"));
    EXPECT_THAT(jobs[0].outputs, ElementsAre("w.glb"));
    EXPECT_THAT(jobs[0].refusal, IsEmpty());
    EXPECT_THAT(jobs[1].outputs, IsEmpty());
    EXPECT_EQ(jobs[1].refusal, "no");
}

TEST(FilesOf, IncludeTheSecondFileOfAFormat) {
    std::vector<dataset::Job> jobs = {{"a.b/w.bvh", "", "a.b/w.bvh", {}, ""}};
    dataset::NameOutputs(jobs, FormatsOf(".gltf"));
    EXPECT_THAT(dataset::FilesOf(jobs[0]), ElementsAre("a.b/w.gltf", "a.b/w.bin"));
    dataset::NameOutputs(jobs, FormatsOf(".glb"));
    EXPECT_THAT(dataset::FilesOf(jobs[0]), ElementsAre("a.b/w.glb"));
    dataset::NameOutputs(jobs, FormatsOf(".gltf .npz"));
    EXPECT_THAT(dataset::FilesOf(jobs[0]), ElementsAre("a.b/w.gltf", "a.b/w.npz", "a.b/w.bin"));
    EXPECT_EQ(dataset::FolderOf(jobs[0]), "a.b/");
}

}  // namespace output_names_test
