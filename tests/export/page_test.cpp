// Pages that show takes. What a browser makes of them is tested in tests/viewer; this holds what
// can be read without one.
#include "export/page.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>

#include "export/page_keys.h"
#include "export/page_record.h"
#include "export/tables.h"
#include "headless/text.h"
#include "tests/export/exported.h"
#include "tests/export/inflate.h"
#include "tests/support/bvh_random.h"
#include "text/byte_sink.h"

namespace page_test {

using exported::Inflate;
using exporters::kPageChannels;
using exporters::Options;
using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

std::string FromBase64(const std::string& text) {
    static const std::string kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0;
    for (const char character : text) {
        const std::size_t digit = kDigits.find(character);
        if (digit == std::string::npos) break;
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count < 8) continue;
        count -= 8;
        bytes += static_cast<char>(bits >> static_cast<unsigned>(count) & 0xFFU);
    }
    return bytes;
}

// Returns the differences between the keys, one animated channel after the other.
std::vector<std::uint32_t> UnpackDifferences(const std::string& text, std::size_t count) {
    if (count == 0) {
        EXPECT_EQ(text, "");
        return {};
    }
    const std::string planes = Inflate(FromBase64(text), 4 * count);
    EXPECT_EQ(planes.size(), 4 * count);
    std::vector<std::uint32_t> differences(count);
    for (std::size_t index = 0; index < count; ++index) {
        std::uint32_t packed = 0;
        for (std::size_t byte = 0; byte < 4; ++byte)
            packed |= std::uint32_t{static_cast<unsigned char>(planes[byte * count + index])}
                      << (8 * byte);
        differences[index] = packed;
    }
    return differences;
}

// The values of all channels in each row, as a page reads them.
std::vector<std::vector<double>> ReadRows(const exporters::PageKeys& keys, std::size_t rows) {
    const std::vector<std::uint32_t> packed =
        UnpackDifferences(keys.text, keys.animated.size() * rows);
    std::vector<std::vector<double>> values(rows, keys.values);
    for (std::size_t curve = 0; curve < keys.animated.size(); ++curve) {
        std::uint32_t bits = 0;
        for (std::size_t row = 0; row < rows; ++row) {
            const std::uint32_t difference = packed[curve * rows + row];
            bits += difference >> 1U ^ (0U - (difference & 1U));
            float key = 0.0F;
            std::memcpy(&key, &bits, sizeof key);
            values[row][keys.animated[curve]] += static_cast<double>(key);
        }
    }
    return values;
}

// The greatest distance between a position of the table and the one that a page computes, divided
// by the size of the figure, or by the greatest coordinate if the figure has no size.
double WorstError(const Options& options) {
    const headless::Scene& scene = exported::CurrentScene();
    const exporters::Table table(scene, options, true);
    const auto rows = ReadRows(exporters::PackKeys(table, scene, options, {}), table.Rows());
    const std::size_t joints = table.Columns().size();
    std::vector<headless::Transform> locals(joints);
    std::vector<headless::Transform> globals(joints);
    std::vector<headless::Transform> read(joints);
    exporters::Table::Scratch scratch;
    double worst = 0.0;
    double size = table.Size();
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        table.Row(row, locals, globals, scratch);
        for (std::size_t joint = 0; joint < joints; ++joint) {
            std::array<double, 6> six{};
            std::copy_n(&rows[row][kPageChannels * joint], 6, six.begin());
            read[joint] = headless::FromLocal(six);
            const std::size_t parent = table.Columns()[joint].parent;
            if (parent != exporters::Joint::kNoParent) read[joint] = read[joint] * read[parent];
            for (int axis = 0; axis < 3; ++axis) {
                const double truth = globals[joint].origin[axis];
                worst = std::max(worst, std::abs(read[joint].origin[axis] - truth));
                size = std::max(size, std::abs(truth));
            }
        }
    }
    return worst == 0.0 ? 0.0 : worst / size;
}

struct Case {
    const char* name;
    std::size_t sample;
    bool nulls;
    void (*set)(Options&);
};

class PagePositions : public testing::TestWithParam<Case> {};

TEST_P(PagePositions, AreThoseOfTheTable) {
    const Case& test = GetParam();
    exported::ImportSettings settings;
    settings.nulls = test.nulls;
    ASSERT_TRUE(exported::Import(exported::Samples()[test.sample], settings));
    Options options;
    test.set(options);
    EXPECT_LT(WorstError(options), 1e-6);
}

const Case kCases[] = {
    {"BvhNulls", 0, true, [](Options&) {}},
    {"BvhBones", 0, false, [](Options&) {}},
    {"AmcNulls", 1, true, [](Options&) {}},
    {"AmcBones", 1, false, [](Options&) {}},
    {"Turned", 0, true, [](Options& options) { options.up = exporters::UpAxis::Z; }},
    {"Scaled", 1, false, [](Options& options) { options.scale = 1e4; }},
    {"Range", 0, true,
     [](Options& options) {
         options.frames = exporters::FrameRange{20, 21};
     }},
    {"Sampled", 0, true, [](Options& options) { options.resampleTo = 25.0; }},
    {"AllNodes", 0, false, [](Options& options) { options.allNodes = true; }},
    {"InPlace", 1, true, [](Options& options) { options.inPlace = true; }},
};
INSTANTIATE_TEST_SUITE_P(, PagePositions, testing::ValuesIn(kCases),
                         [](const auto& test) { return test.param.name; });

TEST(PageKeys, OfRandomFilesGiveThePositionsOfTheTable) {
    for (std::uint32_t seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(seed);
        ASSERT_TRUE(exported::ImportText(support::RandomBvh(seed)));
        EXPECT_LT(WorstError({}), 1e-6);
    }
}

// Turns the joint by `degrees` in each frame, and moves it far away.
std::string Spinner(double degrees, double distance) {
    std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition "
        "Zrotation Xrotation Yrotation\nJOINT Arm\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation "
        "Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\n}\nMOTION\nFrames: 100\n"
        "Frame Time: 0.01\n";
    for (int frame = 0; frame < 100; ++frame)
        text += std::to_string(distance) + " 0 0 " + std::to_string(degrees * frame) + " 0 0 " +
                std::to_string(-degrees * frame) + " 90 0\n";
    return text;
}

TEST(PageKeys, LeaveOutWhatNeverChanges) {
    ASSERT_TRUE(exported::ImportText(Spinner(7.0, 1e6)));
    const headless::Scene& scene = exported::CurrentScene();
    const exporters::Table table(scene, {}, true);
    const exporters::PageKeys keys = exporters::PackKeys(table, scene, {}, {});
    EXPECT_EQ(keys.values[0], 1e6);
    EXPECT_THAT(keys.animated, Not(testing::Contains(std::size_t{0})));
}

TEST(PageKeys, StayPreciseIfAJointTurnsOftenOrIsFarAway) {
    for (const bool nulls : {true, false}) {
        exported::ImportSettings settings;
        settings.nulls = nulls;
        ASSERT_TRUE(exported::ImportText(Spinner(100.0, 1e6), settings));
        EXPECT_LT(WorstError({}), 2e-6);
    }
}

TEST(PageKeys, RefusePositionsTooFarApart) {
    Options options;
    options.scale = 1e300;
    ASSERT_TRUE(exported::ImportText(
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 3 Xposition Yposition Zposition\n"
        "End Site\n{\nOFFSET 0 1 0\n}\n}\nMOTION\nFrames: 2\nFrame Time: 1\n0 0 0\n1 0 0\n"));
    const headless::Scene& scene = exported::CurrentScene();
    const exporters::Table table(scene, options, true);
    EXPECT_THROW(exporters::PackKeys(table, scene, options, {}), exporters::ExportError);
}

TEST(PageKeys, OfTheSamplesAreTheAnglesOfTheScene) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    const headless::Scene& scene = exported::CurrentScene();
    const headless::Object& model = *scene.Models().front();
    const exporters::Table table(scene, {}, true);
    const auto rows = ReadRows(exporters::PackKeys(table, scene, {}, {}), table.Rows());
    std::map<std::wstring, std::size_t> jointOf;
    for (std::size_t joint = 0; joint < table.Columns().size(); ++joint)
        jointOf[table.Columns()[joint].name] = joint;
    std::size_t compared = 0;
    for (const headless::ActionItem& item : exported::MotionOf(model)->items) {
        if (!item.IsCurve() || item.channel < headless::Channel::RotX) continue;
        const std::wstring name(headless::View(item.object));
        const std::size_t channel =
            kPageChannels * jointOf.at(name) + static_cast<std::size_t>(*item.channel);
        for (std::size_t row = 0; row < rows.size(); ++row)
            ASSERT_NEAR(rows[row][channel], (*item.GetCurve().keys.values)[row], 1e-4) << row;
        ++compared;
    }
    EXPECT_GT(compared, 40U);
}

json RecordOf(const Options& options, const exporters::RunRecord* record = nullptr) {
    const headless::Scene& scene = exported::CurrentScene();
    const exporters::Table table(scene, options, true);
    return json::parse(exporters::PageRecord(
        table, scene, options, exporters::PackKeys(table, scene, options, {}), record));
}

TEST(PageRecord, DescribesTheTake) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    Options options;
    options.source.files = {{"takes/walk.bvh"}};
    const headless::Session& session = headless::Session::Current();
    exporters::RunRecord run{0, session.Log(), session.Bar(), session.Commands(), "{}"};
    run.findings = {R"({"code":"rate-missing"})", "damaged", R"({"code":"row-cut"})"};
    run.findingFrames = {std::nullopt, std::nullopt, 12};
    const json record = RecordOf(options, &run);
    EXPECT_EQ(record["name"], "walk.bvh");
    EXPECT_EQ(record["frames"], 257);
    EXPECT_NEAR(record["fps"].get<double>(), 60.0, 1e-6);
    EXPECT_EQ(record["firstFrame"], 1);
    EXPECT_EQ(record["frameStep"], 1);
    EXPECT_EQ(record["up"], "y");
    EXPECT_EQ(record["unit"], 0.01);
    EXPECT_NEAR(record["height"].get<double>(), 174.0, 1.0);
    EXPECT_THAT(record["models"], ElementsAre("walk"));
    EXPECT_THAT(record["joints"]["names"], SizeIs(27));
    EXPECT_EQ(record["joints"]["names"][1], "LeftUpLeg");
    EXPECT_EQ(record["joints"]["sides"][1], 1);
    EXPECT_EQ(record["joints"]["sides"][6], 2);
    EXPECT_EQ(record["joints"]["parents"][0], -1);
    EXPECT_EQ(record["joints"]["ends"][5], 1);
    EXPECT_THAT(record["rest"], SizeIs(6 * 27));
    EXPECT_THAT(record["values"], SizeIs(6 * 27));
    EXPECT_THAT(record["findings"], ElementsAre(json{{"code", "rate-missing"}},
                                                json{{"code", "row-cut"}, {"frame", 12}}));
    EXPECT_THAT(record["notes"], IsEmpty());
    EXPECT_EQ(record["provenance"]["sourceFiles"][0], "walk.bvh");
}

// The number of the frame of a finding at the key 12, as the page shows it; null if it shows none.
json FrameOfFinding(const Options& options) {
    const headless::Session& session = headless::Session::Current();
    exporters::RunRecord run{0, session.Log(), session.Bar(), session.Commands(), "{}"};
    run.findings = {R"({"code":"row-cut"})"};
    run.findingFrames = {12};
    return RecordOf(options, &run)["findings"][0].value("frame", json());
}

TEST(PageRecord, LeadsToTheFrameThatThePageShows) {
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    EXPECT_EQ(FrameOfFinding({}), 12);
    EXPECT_EQ(FrameOfFinding({.frames = exporters::FrameRange{10, 20}}), 12);
    EXPECT_EQ(FrameOfFinding({.frames = exporters::FrameRange{12, 12}}), 12);
    EXPECT_EQ(FrameOfFinding({.frames = exporters::FrameRange{13, 20}}), nullptr);
    EXPECT_EQ(FrameOfFinding({.frames = exporters::FrameRange{1, 11}}), nullptr);
    // At half of the rate, the samples are at the keys 1, 3, 5, ... and have the numbers 1, 2, 3.
    EXPECT_EQ(FrameOfFinding({.resampleTo = 30.0}), 7);
}

TEST(PageRecord, OfASkeletonWithoutMotionHasOneFrameAndNoKeys) {
    ASSERT_TRUE(exported::Import({exported::Samples()[1][0]}));
    const json record = RecordOf({});
    EXPECT_EQ(record["frames"], 1);
    EXPECT_EQ(record["fps"], 0.0);
    EXPECT_EQ(record["firstFrame"], 0);
    EXPECT_EQ(record["name"], "walk");
    EXPECT_THAT(record["animated"], IsEmpty());
    EXPECT_THAT(record["notes"], SizeIs(1));
}

TEST(PageRecord, OfSeveralModelsSaysWhichJointsAreTheirs) {
    ASSERT_TRUE(exported::ImportText(Spinner(1.0, 0.0) + Spinner(2.0, 1.0)));
    const json record = RecordOf({});
    EXPECT_THAT(record["models"], SizeIs(2));
    EXPECT_THAT(record["joints"]["models"], ElementsAre(0, 0, 0, 1, 1, 1));
}

// A page that cannot be broken by names: they have no character that could end the script element.
TEST(PageRecord, HoldsNamesAsData) {
    ASSERT_TRUE(exported::ImportText(Spinner(1.0, 0.0)));
    const_cast<headless::Object*>(exported::CurrentScene().Models().front())->name =
        Zelk::CString(L"</script><!--\x2028\x2029\"\\");
    Options options;
    options.source.files = {{"<script>\xFF.bvh"}};
    const headless::Scene& scene = exported::CurrentScene();
    const exporters::Table table(scene, options, true);
    const std::string text = exporters::PageRecord(
        table, scene, options, exporters::PackKeys(table, scene, options, {}), nullptr);
    for (const char character : text) {
        ASSERT_NE(character, '<');
        ASSERT_LT(static_cast<unsigned char>(character), 0x80);
    }
    const json record = json::parse(text);
    EXPECT_EQ(record["models"][0], "</script><!--\u2028\u2029\"\\");
    EXPECT_EQ(record["name"], "<script>\uFFFD.bvh");
}

TEST(Page, HoldsAllTakes) {
    if (!exporters::HasViewer()) GTEST_SKIP() << "this build has no viewer";
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    Options options;
    options.source.files = {{"<b>&.bvh"}};
    const exporters::PageTake take =
        exporters::BuildPageTake(exported::CurrentScene(), options, nullptr);
    const exporters::PageTake takes[] = {take, take};
    text::StringSink out;
    exporters::WritePage(out, takes);
    const std::string& page = out.Bytes();
    EXPECT_THAT(page, StartsWith("<!doctype html>"));
    EXPECT_THAT(page, EndsWith("</html>\n"));
    EXPECT_THAT(page, HasSubstr("<title>&lt;b&gt;&amp;.bvh +1</title>"));
    EXPECT_THAT(page, HasSubstr("<script type=\"application/octet-stream\" id=\"keys-1\">" +
                                take.keys + "</script>"));
    EXPECT_THAT(page, Not(HasSubstr("id=\"keys-2\"")));
    EXPECT_EQ(exported::Export(".html"), exported::Export(".html"));
}

TEST(Page, IsRefusedWithoutTheViewer) {
    if (exporters::HasViewer()) GTEST_SKIP() << "this build has a viewer";
    ASSERT_TRUE(exported::Import(exported::Samples()[0]));
    EXPECT_THROW(exporters::BuildPageTake(exported::CurrentScene(), {}, nullptr),
                 exporters::ExportError);
}

}  // namespace page_test
