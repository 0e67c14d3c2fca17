// The mended text of a BVH file is made while it is written.
#include <cstdlib>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

#include "survey/survey.h"
#include "text/byte_sink.h"

namespace bvh_mended_text_test {

using survey::Purpose;

survey::BvhSurvey Survey(const std::string& file, Purpose purpose) {
    survey::Options options;
    options.purpose = purpose;
    return survey::SurveyBvh(file, options);
}

// A file whose rotations must be re-expressed; `eol` ends each line but the last.
std::string File(std::size_t frames, const std::string& eol = "\n") {
    std::string file = "HIERARCHY" + eol + "ROOT Hips" + eol + "{" + eol + "OFFSET 0 0 0" + eol +
                       "CHANNELS 6 Xposition Yposition Zposition Xrotation Yrotation Zrotation" +
                       eol + "End Site" + eol + "{" + eol + "OFFSET 0 1 0" + eol + "}" + eol + "}" +
                       eol + "MOTION" + eol + "Frames: " + std::to_string(frames) + eol +
                       "Frame Time: 0.1";
    for (std::size_t frame = 0; frame < frames; ++frame)
        file += eol + std::to_string(frame) + " 2 -3.5e0 0 0 " + std::to_string(frame % 90);
    return file;
}

// There are enough values that two threads share them. The rows must keep their order.
TEST(MendedBvh, RowsAreWrittenInTheirOrder) {
    constexpr std::size_t kFrames = 4000;
    const std::string file = File(kFrames);
    const survey::BvhSurvey surveyed = Survey(file, Purpose::Import);
    ASSERT_TRUE(surveyed.mended);
    std::istringstream lines(surveyed.mended->Text());
    std::string line;
    while (std::getline(lines, line) && !line.starts_with("Frame Time:")) {
    }
    for (std::size_t frame = 0; frame < kFrames; ++frame) {
        ASSERT_TRUE(std::getline(lines, line));
        ASSERT_EQ(line, std::to_string(frame) + " 2 -3.5e0 0 0 " + std::to_string(frame % 90));
    }
    EXPECT_FALSE(std::getline(lines, line));
}

struct Case {
    const char* name;
    std::string file;
};

std::string With(std::string text, const std::string& old, const std::string& replacement) {
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    return text.replace(at, old.size(), replacement);
}

const Case kCases[] = {
    {"NoRows", File(0)},
    {"OneRow", File(1)},
    {"Rows", File(1000)},
    {"CarriageReturns", File(1000, "\r\n")},
    {"CarriageReturnsAlone", File(300, "\r")},
    {"BlankLineBetween", With(File(300), "\n17 2", "\n\n17 2")},
    {"BlanksAround", With(File(300), "\n17 2", " \t\n \t17  2")},
    {"VeryLongNumber", With(File(300), "\n17 2", "\n17 2." + std::string(500, '0'))},
    {"VeryLongLastNumber", File(300) + '.' + std::string(500, '0')},
    {"FewerFramesAnnounced", With(File(300), "Frames: 300", "Frames: 200")},
    {"MoreFramesAnnounced", With(File(300), "Frames: 300", "Frames: 400")},
    {"RowOfAnotherLength", With(File(300), "\n17 2", "\n17")},
    {"NoNumber", With(File(300), "\n17 2", "\nnan 2")},
    {"TwoSections", File(300) + '\n' + File(200)},
};

class MendedBvhText : public testing::TestWithParam<Case> {};

TEST_P(MendedBvhText, IsTheSameEachTimeOnAnyNumberOfThreads) {
    for (const Purpose purpose : {Purpose::Import, Purpose::Fix}) {
        const survey::BvhSurvey surveyed = Survey(GetParam().file, purpose);
        ASSERT_TRUE(surveyed.mended);
        const std::string text = surveyed.mended->Text();
        EXPECT_LE(text.size(), surveyed.mended->LikelyBytes());
        for (const char* const threads : {"1", "2", "5"}) {
            setenv("ZKMOCAP_THREADS", threads, 1);
            EXPECT_EQ(surveyed.mended->Text(), text) << threads;
        }
        unsetenv("ZKMOCAP_THREADS");
    }
}

// If another section follows, the survey itself reads all rows of this one.
TEST_P(MendedBvhText, IsTheSameIfTheSurveyReadsTheRows) {
    const std::string longer = GetParam().file + '\n' + File(2);
    for (const Purpose purpose : {Purpose::Import, Purpose::Fix}) {
        const std::string text = Survey(GetParam().file, purpose).mended->Text();
        const std::string both = Survey(longer, purpose).mended->Text();
        EXPECT_EQ(both.substr(0, text.size()), text);
        EXPECT_TRUE(both.substr(text.size()).starts_with("HIERARCHY\n"));
    }
}

INSTANTIATE_TEST_SUITE_P(, MendedBvhText, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

// Accepts so many bytes.
class SmallSink final : public text::ByteSink {
  public:
    explicit SmallSink(std::size_t room) : room_(room) {}
    void Write(std::string_view bytes) override {
        EXPECT_FALSE(hasFailed_);
        hasFailed_ = bytes.size() > room_;
        if (hasFailed_) throw text::WriteError("no room");
        room_ -= bytes.size();
    }

  private:
    std::size_t room_;
    bool hasFailed_ = false;
};

TEST(MendedBvh, WritesNothingMoreAfterAnError) {
    const std::string file = File(4000);
    const survey::BvhSurvey surveyed = Survey(file, Purpose::Import);
    const std::size_t size = surveyed.mended->Text().size();
    for (const std::size_t room : {std::size_t{0}, std::size_t{200}, size / 2, size - 1}) {
        SmallSink sink(room);
        EXPECT_THROW(surveyed.mended->Write(sink), text::WriteError) << room;
    }
    SmallSink sink(size);
    EXPECT_NO_THROW(surveyed.mended->Write(sink));
}

}  // namespace bvh_mended_text_test
