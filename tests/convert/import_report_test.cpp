#include "app/import_report.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace {

using app::ImportReport;
using app::ReadReport;
using testing::EndsWith;

void ExpectSame(const ImportReport& report) {
    const std::string line = app::ReportLine(report);
    EXPECT_THAT(line, EndsWith("\n"));
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
    const auto read = ReadReport(line);
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->joints, report.joints);
    EXPECT_EQ(read->frames, report.frames);
    EXPECT_EQ(read->framesPerSecond, report.framesPerSecond);
    EXPECT_EQ(read->seconds, report.seconds);
    EXPECT_EQ(read->written, report.written);
    EXPECT_EQ(read->error, report.error);
}

TEST(ImportReport, IsReadBack) {
    ExpectSame({});
    ExpectSame({31, 120, 1.0 / 0.0083333, 3.1, true, ""});
    ExpectSame({1, 0, std::nullopt, std::nullopt, false, "ERROR (LINE 1): \"a\\b\"\n\x1b[31m 歩"});
}

TEST(ImportReport, IsNothingElse) {
    for (const char* text :
         {"", "{}", "walk.bvh: 1 model imported", "[1, 2]", R"({"joints": -)",
          R"({"joints":"a","frames":1,"fps":null,"seconds":null,"written":true,"error":""})"})
        EXPECT_EQ(ReadReport(text), std::nullopt) << text;
}

}  // namespace
