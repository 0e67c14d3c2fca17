// Exports of a range of frames, in every format that honours the option.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

#include "export/formats.h"
#include "headless/session.h"
#include "tests/export/exported.h"
#include "tests/export/glb.h"
#include "text/byte_sink.h"

namespace {

using exporters::FrameRange;
using testing::ElementsAre;
using testing::HasSubstr;

const exporters::Options kMiddle{.frames = FrameRange{3, 5}};

// A BVH file with the frames `first` to `last` of a motion. In frame n the root is at x = n and the
// arm is turned by n degrees.
std::string Capture(int first, int last) {
    std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition "
        "Zrotation Xrotation Yrotation\nJOINT Arm\n{\nOFFSET 0 9 0\nCHANNELS 3 Zrotation "
        "Xrotation Yrotation\nEnd Site\n{\nOFFSET 4 0 0\n}\n}\n}\nMOTION\nFrames: " +
        std::to_string(last - first + 1) + "\nFrame Time: 0.25\n";
    for (int frame = first; frame <= last; ++frame)
        text += std::to_string(frame) + " 0 0 0 0 0 " + std::to_string(frame) + " 0 0\n";
    return text;
}

class FrameRangeIn : public testing::TestWithParam<exporters::Format> {
  protected:
    struct Written {
        std::string refusal;
        std::string out;
        std::string side;
    };
    static Written Write(const exporters::Options& options) {
        const headless::Session& session = headless::Session::Current();
        const exporters::RunRecord record{0, session.Log(), session.Bar(), session.Commands(),
                                          "{}"};
        text::StringSink out;
        text::StringSink side;
        exporters::Notes notes;
        Written written;
        written.refusal = exporters::Write(GetParam(), {session.GetScene(), options, &record},
                                           {out, &side, "side"}, notes);
        written.out = out.Bytes();
        written.side = side.Bytes();
        return written;
    }
    static bool Honours() { return (GetParam().honoured & exporters::kFrames) != 0; }
};

TEST_P(FrameRangeIn, OfAllFramesIsTheWholeMotion) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    const Written whole = Write({});
    for (const FrameRange range : {FrameRange{1, 8}, {-5, 100}}) {
        const Written written = Write({.frames = range});
        EXPECT_EQ(written.refusal, "");
        EXPECT_EQ(written.side, whole.side);
        // These formats name the options with which a file was made, so it differs.
        if ((GetParam().honoured & exporters::kProvenance) != 0) continue;
        EXPECT_EQ(written.out, whole.out);
    }
}

TEST_P(FrameRangeIn, WithoutAFrameIsRefused) {
    constexpr std::int64_t kFirst = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kLast = std::numeric_limits<std::int64_t>::max();
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    for (const auto& [range, words] : {std::pair(FrameRange{9, 12}, "from 9 to 12"),
                                       {FrameRange{-3, 0}, "from -3 to 0"},
                                       {FrameRange{9, kLast}, "from 9 on"},
                                       {FrameRange{kFirst, 0}, "up to 0"},
                                       {FrameRange{5, 4}, "from 5 to 4"}}) {
        const Written written = Write({.frames = range});
        if (Honours()) {
            EXPECT_EQ(written.refusal, "take: the motion has no frame " + std::string(words) +
                                           "; its frames are 1 to 8");
            EXPECT_EQ(written.out + written.side, "");
        } else {
            EXPECT_EQ(written.refusal, "");
        }
    }
}

TEST_P(FrameRangeIn, LeavesAPoseAsItIs) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 0)));
    const Written pose = Write({});
    const Written written = Write(kMiddle);
    EXPECT_EQ(written.refusal, "");
    EXPECT_EQ(written.side, pose.side);
}

TEST_P(FrameRangeIn, ChangesTheOutputsThatHonourIt) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    const Written whole = Write({});
    const Written middle = Write(kMiddle);
    EXPECT_EQ(middle.out + middle.side != whole.out + whole.side, Honours());
    if (!GetParam().sideExtension.empty()) {
        EXPECT_LT(middle.side.size(), whole.side.size());
    }
}

INSTANTIATE_TEST_SUITE_P(, FrameRangeIn, testing::ValuesIn(exported::WrittenFormats()),
                         [](const auto& row) {
                             return std::string(row.param.extension.substr(1));
                         });

// The format has no frame numbers, so an exported range is equal to the export of a capture that
// has only these frames.
TEST(FrameRange, EqualsAShorterCaptureInBvh) {
    ASSERT_TRUE(exported::ImportText(Capture(3, 5)));
    const std::string part = exported::Export(".bvh");
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    EXPECT_EQ(exported::Export(".bvh", kMiddle), part);
}

TEST(FrameRange, EqualsAShorterCaptureInNpzUpToItsNumbers) {
    const auto upToNumbers = [](const exporters::Options& options) {
        const std::string archive = exported::Export(".npz", options);
        return archive.substr(0, archive.find("frame_numbers.npy") - 30);  // without its header
    };
    ASSERT_TRUE(exported::ImportText(Capture(3, 5)));
    const std::string part = upToNumbers({});
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    EXPECT_TRUE(upToNumbers(kMiddle) == part);
}

TEST(FrameRange, KeepsItsNumbersInCsv) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    const std::string text = exported::Export(".csv", kMiddle);
    EXPECT_THAT(text, HasSubstr("\n3,0,3,0,0,"));
    EXPECT_THAT(text, HasSubstr("\n4,0.25,4,0,0,"));
    EXPECT_THAT(text, HasSubstr("\n5,0.5,5,0,0,"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
}

TEST(FrameRange, StartsAtSecondZeroInGltf) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    const exported::Glb glb(exported::Export(".glb", kMiddle));
    EXPECT_THAT(glb.Times(), ElementsAre(0.0F, 0.25F, 0.5F));
    EXPECT_THAT(glb.Track("Hips", "translation"), ElementsAre(3, 0, 0, 4, 0, 0, 5, 0, 0));
    EXPECT_EQ(glb.json["animations"][0]["extras"]["firstFrame"], 3);
    EXPECT_EQ(glb.json["asset"]["extras"]["options"]["frames"], nlohmann::json::array({3, 5}));
}

TEST(FrameRange, HasToHoldAFrameOfEachMotion) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8) + Capture(1, 4)));
    for (const char* extension : {".bvh", ".csv", ".fbx", ".glb", ".npz"}) {
        EXPECT_NO_THROW(exported::Export(extension, kMiddle)) << extension;
        try {
            exported::Export(extension, {.frames = FrameRange{5, 8}});
            ADD_FAILURE() << extension;
        } catch (const exporters::ExportError& error) {
            EXPECT_STREQ(error.what(),
                         "take1: the motion has no frame from 5 to 8; its frames are 1 to 4");
        }
        EXPECT_NO_THROW(exported::Export(extension, {.frames = FrameRange{5, 8}, .models = 1}));
    }
}

TEST(FrameRange, IsResampledFromItsFirstFrameToItsLast) {
    ASSERT_TRUE(exported::ImportText(Capture(1, 8)));
    const std::string text =
        exported::Export(".csv", {.resampleTo = 8.0, .frames = FrameRange{3, 4}});
    EXPECT_THAT(text, HasSubstr("\n3,0,3,"));
    // Samples are numbered one by one.
    EXPECT_THAT(text, HasSubstr("\n4,0.125,3.5,"));
    EXPECT_THAT(text, HasSubstr("\n5,0.25,4,"));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
}

}  // namespace
