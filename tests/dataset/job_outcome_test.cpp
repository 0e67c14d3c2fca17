#include "dataset/job_outcome.h"

#include <gmock/gmock.h>

namespace {

using dataset::IndexRow;
using dataset::JobStatus;
using dataset::ProcessEnd;

const dataset::Job kJob{"t/walk.bvh", "", "walk.bvh", {"walk.glb"}, ""};

// Returns the end of a process that was not killed.
ProcessEnd Ended(int exitStatus, const std::string& output = "", const std::string& errors = "") {
    ProcessEnd end;
    end.exitStatus = exitStatus;
    end.output = output;
    end.errors = errors;
    return end;
}

std::string LineOf(const std::string& error, bool written) {
    const std::optional<double> milliseconds = written ? std::optional(1.5) : std::nullopt;
    return dataset::ReportLine({3, 4, 30.000300003, 0.5, {milliseconds}, error, false, {}});
}

struct Row {
    const char* name;
    ProcessEnd end;
    JobStatus status;
    const char* output;
    const char* facts;
    const char* error;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

ProcessEnd Crashed() {
    ProcessEnd end;
    end.trouble = "killed by SIGSEGV (Segmentation fault)";
    end.output = LineOf("ERROR: no", true);
    return end;
}

ProcessEnd Cancelled() {
    ProcessEnd end = Ended(130);
    end.cancelled = true;
    return end;
}

const Row kRows[] = {
    {"Imported", Ended(0, LineOf("", true)), JobStatus::Ok, "walk.glb", "3 4 30.0003 0.5", ""},
    {"ImportedByATalkativePlugin", Ended(0, "hello\n" + LineOf("", true)), JobStatus::Ok,
     "walk.glb", "3 4 30.0003 0.5", ""},
    {"InPart", Ended(5, LineOf("ERROR (LINE 3): x", true)), JobStatus::Partial, "walk.glb",
     "3 4 30.0003 0.5", "ERROR (LINE 3): x"},
    {"Failed", Ended(1, LineOf("ERROR: x", false), "walk.bvh: ERROR: x\n"), JobStatus::Failed, "",
     "   ", "ERROR: x"},
    {"FailedWithARecord", Ended(1, LineOf("ERROR: x", true)), JobStatus::Failed, "walk.glb", "   ",
     "ERROR: x"},
    {"NotWritten", Ended(3, LineOf("", false), "a\nzkhost: cannot write w\nzkhost: b\n"),
     JobStatus::Failed, "", "3 4 30.0003 0.5", "cannot write w"},
    {"WithoutMemory", Ended(1, "", "zkhost: out of memory\n"), JobStatus::Failed, "", "   ",
     "out of memory"},
    {"EndedByThePlugin", Ended(0, "", "zkhost: odd\n"), JobStatus::Failed, "", "   ", "odd"},
    {"EndedByThePluginInSilence", Ended(0), JobStatus::Failed, "", "   ",
     "ended with exit status 0"},
    {"Silent", Ended(77), JobStatus::Failed, "", "   ", "ended with exit status 77"},
    {"Crashed", Crashed(), JobStatus::Failed, "walk.glb", "   ",
     "killed by SIGSEGV (Segmentation fault)"},
    {"Cancelled", Cancelled(), JobStatus::Cancelled, "", "   ", ""},
};

class JobOutcome : public testing::TestWithParam<Row> {};

TEST_P(JobOutcome, IsAsExpected) {
    const Row& expected = GetParam();
    const IndexRow row = dataset::JudgeJob(kJob, expected.end);
    EXPECT_EQ(row.source, kJob.source);
    EXPECT_EQ(row.status, expected.status);
    EXPECT_EQ(row.output, expected.output);
    EXPECT_EQ(row.joints + ' ' + row.frames + ' ' + row.framesPerSecond + ' ' + row.seconds,
              expected.facts);
    EXPECT_EQ(row.error, expected.error);
}

INSTANTIATE_TEST_SUITE_P(, JobOutcome, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(OutputsOfARow, AreThoseThatWereWritten) {
    const dataset::Job job{"t/a.bvh", "", "a.bvh", {"a.glb", "a.npz", "a.json"}, ""};
    const auto output = [&](std::vector<std::optional<double>> written) {
        dataset::ImportReport report;
        report.outputs = std::move(written);
        return dataset::JudgeJob(job, Ended(0, dataset::ReportLine(report))).output;
    };
    EXPECT_EQ(output({1.0, 2.0, 0.0}), "a.glb|a.npz|a.json");
    EXPECT_EQ(output({1.0, std::nullopt, 0.0}), "a.glb|a.json");
    EXPECT_EQ(output({std::nullopt, std::nullopt, 1.0}), "a.json");
    EXPECT_EQ(output({std::nullopt, std::nullopt, std::nullopt}), "");
    EXPECT_EQ(output({}), "");
}

TEST(RefusedJob, IsAFailure) {
    const IndexRow row = dataset::RefusedRow({"t/a.amc", "", "a.amc", {}, "no skeleton"});
    EXPECT_EQ(row.status, JobStatus::Failed);
    EXPECT_EQ(row.error, "no skeleton");
}

ProcessEnd EndWithFindings(bool refused) {
    dataset::ImportReport report;
    report.refused = refused;
    report.error = refused ? "3:1: error: x [row-length]" : "";
    report.findings = {{"rotation-order", "note", "walk.bvh:1:1: note: a\n"},
                       {"row-cut", "warning", "walk.bvh:2:1: warning: b\n"},
                       {"row-length", refused ? "error" : "warning", "walk.bvh:3:1: x\n"},
                       {"row-cut", "warning", "walk.amc:4:1: warning: c\n"}};
    return Ended(refused ? 1 : 0, dataset::ReportLine(report));
}

TEST(JobFindings, AreCountedAndNamedInTheRow) {
    const IndexRow row = dataset::JudgeJob(kJob, EndWithFindings(false));
    EXPECT_EQ(row.warnings, "3");
    EXPECT_EQ(row.findings, "rotation-order row-cut row-length");
    EXPECT_EQ(row.error, "");
    const IndexRow refused = dataset::JudgeJob(kJob, EndWithFindings(true));
    EXPECT_EQ(refused.warnings, "2");
    EXPECT_EQ(refused.error, "3:1: error: x [row-length]");
}

TEST(JobFindings, AreReportedExceptNotes) {
    const dataset::JobDetails details = dataset::DetailsOf(EndWithFindings(true));
    EXPECT_TRUE(details.refused);
    EXPECT_EQ(details.findings,
              "walk.bvh:2:1: warning: b\nwalk.bvh:3:1: x\nwalk.amc:4:1: warning: c\n");
    EXPECT_FALSE(dataset::DetailsOf(EndWithFindings(false)).refused);
    EXPECT_EQ(dataset::DetailsOf(Ended(77)).findings, "");
}

TEST(JobTimes, AreThoseOfTheImportAndOfAllOutputs) {
    dataset::ImportReport report;
    report.loadMilliseconds = 4.0;
    report.outputs = {1.5, std::nullopt, 2.0};
    const dataset::JobDetails details = dataset::DetailsOf(Ended(3, dataset::ReportLine(report)));
    EXPECT_EQ(details.loadMilliseconds, 4.0);
    EXPECT_EQ(details.writeMilliseconds, 3.5);
    EXPECT_TRUE(details.wasRun);
    EXPECT_TRUE(dataset::DetailsOf(Ended(77)).wasRun);
    EXPECT_EQ(dataset::DetailsOf(Ended(77)).loadMilliseconds, 0.0);
}

}  // namespace
