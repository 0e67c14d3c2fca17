// A scene that a format cannot hold is refused with a message of one line, and no file is left.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/session.h"
#include "tests/export/exported.h"
#include "tests/support/temporary_folder.h"

namespace refusal_test {

using testing::HasSubstr;

constexpr const char* kExtensions[] = {".glb", ".gltf", ".fbx", ".bvh", ".csv", ".npz"};

std::string Take(const char* offset, const char* frameTime, const char* value) {
    return std::string("HIERARCHY\nROOT Hips\n{\nOFFSET ") + offset +
           " 2 3\nCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
           "End Site\n{\nOFFSET 0 1 0\n}\n}\nMOTION\nFrames: 2\nFrame Time: " +
           frameTime + "\n0 0 0 0 0 0\n" + value + " 0 0 0 0 0\n";
}

// A BVH file whose root has this name, with `count` children that have short names.
std::string ManyJoints(int count, const std::string& name) {
    std::string text = "HIERARCHY ROOT " + name + " { OFFSET 0 0 0\n";
    for (; count > 0; --count)
        text += "JOINT a { OFFSET 0 1 0 }\n";
    return text + "}\nMOTION\nFrames: 0\nFrame Time: 1\n";
}

struct Row {
    const char* name;
    std::string bvh;
    exporters::Options options;
    const char* message;
    std::vector<std::string> extensions = {std::begin(kExtensions), std::end(kExtensions)};
};

// Without this, the name of the test would contain the bytes of the row.
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"NanKey",
     Take("1", "0.1", "nan"),
     {},
     "take.Hips.kine.local.posx is not a finite number in frame 2"},
    {"InfiniteKey", Take("1", "0.1", "-inf"), {}, "not a finite number in frame 2"},
    {"NanKeyOfAPose", Take("1", "0", "nan"), {}, "not a finite number in frame 2"},
    {"InfiniteOffset", Take("inf", "0.1", "1"), {}, "take.Hips has no finite position"},
    {"NanFrameTime",
     Take("1", "nan", "1"),
     {},
     "take: the length of the motion is not a finite time"},
    {"TooLargeForSingle",
     Take("1", "0.1", "1e39"),
     {},
     "too large for a 32-bit float",
     {".glb", ".gltf", ".fbx"}},
    {"TooLargeOnceScaled", Take("1", "0.1", "1e300"), {.scale = 1e300}, "finite"},
    {"TooSlow", Take("1", "0.1", "1"), {.framesPerSecond = 1e-310}, "too few"},
    {"TooSlowSamples", Take("1", "0.1", "1"), {.resampleTo = 1e-310}, "too few"},
    {"OneNameThatMakesAllLong",
     ManyJoints(5000, std::string(5000, 'n')),
     {},
     "each of 5001 joints",
     {".npz"}},
    {"TooManyFrames", Take("1", "0.1", "1"), {.resampleTo = 1e12}, "more than 10000000 frames"},
    {"NoModelAtAll", Take("1", "0.1", "1"), {.models = 0}, "there is no model to write"},
};

class Refusal : public testing::TestWithParam<Row> {};

TEST_P(Refusal, LeavesNoFile) {
    ASSERT_TRUE(exported::ImportText(GetParam().bvh));
    for (const std::string& extension : GetParam().extensions) {
        const support::TemporaryFolder folder;
        try {
            exported::ExportTo(folder.Path("out" + extension), GetParam().options);
            ADD_FAILURE() << extension << " was written";
        } catch (const exporters::ExportError& error) {
            EXPECT_THAT(error.what(), HasSubstr(GetParam().message)) << extension;
            EXPECT_THAT(error.what(), testing::Not(HasSubstr("\n")));
        }
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << extension;
    }
}

INSTANTIATE_TEST_SUITE_P(, Refusal, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(Tables, RefuseModelsOfDifferentRates) {
    ASSERT_TRUE(exported::ImportText(Take("1", "0.1", "1") + Take("1", "0.2", "1")));
    for (const char* extension : {".csv", ".npz"}) {
        EXPECT_THROW(exported::Export(extension), exporters::ExportError);
        EXPECT_NO_THROW(exported::Export(extension, {.framesPerSecond = 30.0}));
        EXPECT_NO_THROW(exported::Export(extension, {.models = 1}));
    }
}

}  // namespace refusal_test
