#include "dataset/import_report.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace {

using dataset::ImportReport;
using dataset::ReadReport;
using testing::EndsWith;

void ExpectSame(const ImportReport& report) {
    const std::string line = dataset::ReportLine(report);
    EXPECT_THAT(line, EndsWith("\n"));
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    const auto read = ReadReport(line);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->joints, report.joints);
    EXPECT_EQ(read->frames, report.frames);
    EXPECT_EQ(read->framesPerSecond, report.framesPerSecond);
    EXPECT_EQ(read->seconds, report.seconds);
    EXPECT_EQ(read->outputs, report.outputs);
    EXPECT_EQ(read->loadMilliseconds, report.loadMilliseconds);
    EXPECT_EQ(read->hashMilliseconds, report.hashMilliseconds);
    EXPECT_EQ(read->diskIsFull, report.diskIsFull);
    EXPECT_EQ(read->error, report.error);
    EXPECT_EQ(read->refused, report.refused);
    ASSERT_EQ(read->findings.size(), report.findings.size());
    for (std::size_t index = 0; index < report.findings.size(); ++index) {
        EXPECT_EQ(read->findings[index].code, report.findings[index].code);
        EXPECT_EQ(read->findings[index].severity, report.findings[index].severity);
        EXPECT_EQ(read->findings[index].line, report.findings[index].line);
    }
}

TEST(ImportReport, IsReadBack) {
    ExpectSame({});
    ExpectSame(
        {31, 120, 1.0 / 0.0083333, 3.1, {1.25, std::nullopt, 0.0}, "", false, {}, 12.5, true});
    ExpectSame(
        {1, 0, std::nullopt, std::nullopt, {}, "ERROR (LINE 1): \"a\\b\"\n\x1b[31m 歩", false, {}});
    ExpectSame({0,
                0,
                std::nullopt,
                std::nullopt,
                {std::nullopt},
                "3:1: error: x",
                true,
                {{"row-length", "error", "a.bvh:3:1: error: x\n"},
                 {"row-cut", "warning", "a.bvh:4:1: warning: y\n"},
                 {"name-blank", "note", "a.bvh:5:1: note: z\n"}}});
}

TEST(ImportReport, IsNotReadFromOtherTexts) {
    for (const char* text :
         {"", "{}", "walk.bvh: 1 model imported", "[1, 2]", R"({"joints": -)",
          R"({"joints":"a","frames":1,"fps":null,"seconds":null,"outputs":[1.5],"error":""})",
          R"({"joints":1,"frames":1,"fps":null,"seconds":null,"outputs":[1.5],"error":"",
              "refused":false,"findings":[["a"]],"load_ms":1,"hash_ms":0,"disk_full":false})",
          R"({"joints":1,"frames":1,"fps":null,"seconds":null,"outputs":[true],"error":"",
              "refused":false,"findings":[],"load_ms":1,"hash_ms":0,"disk_full":false})"})
        EXPECT_EQ(ReadReport(text), std::nullopt) << text;
}

}  // namespace
