#include "dataset/ledger.h"

#include <gmock/gmock.h>

#include "tests/support/temporary_folder.h"

namespace {

using dataset::IndexRow;
using dataset::Job;
using dataset::JobStatus;
using dataset::Ledger;

const Job kWalk{"t/walk, \"1\"\n.bvh", "", "walk.bvh", {"walk.glb"}, ""};
const Job kTake{"t/07_01.amc", "t/07.asf", "07_01.amc", {"07_01.glb"}, ""};

IndexRow RowOf(const Job& job, JobStatus status = JobStatus::Ok) {
    return {job.source, dataset::OutputField(job.outputs), status, "31", "120", "60", "2", "", "1",
            "row-cut"};
}

class LedgerFile : public testing::Test {
  protected:
    std::string Path() const { return folder_.Path(dataset::kLedgerName); }

    support::TemporaryFolder folder_;
};

TEST_F(LedgerFile, ReadsBackJobsThatSucceeded) {
    {
        Ledger ledger(Path(), "options");
        ledger.Start({kWalk}, {RowOf(kWalk)});
        ledger.Note(kTake, RowOf(kTake));
    }
    Ledger ledger(Path(), "options");
    ASSERT_EQ(ledger.Read(), Ledger::Content::Usable);
    for (const Job& job : {kWalk, kTake}) {
        const IndexRow* row = ledger.Find(job);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->source, job.source);
        EXPECT_EQ(row->output, dataset::OutputField(job.outputs));
        EXPECT_EQ(row->status, JobStatus::Ok);
        EXPECT_EQ(row->joints + ' ' + row->frames + ' ' + row->framesPerSecond + ' ' + row->seconds,
                  "31 120 60 2");
        EXPECT_EQ(row->warnings + ' ' + row->findings, "1 row-cut");
    }
}

TEST_F(LedgerFile, HoldsOnlyJobsThatSucceeded) {
    {
        Ledger ledger(Path(), "options");
        ledger.Start({kWalk, kTake}, {RowOf(kWalk, JobStatus::Partial), RowOf(kTake)});
    }
    Ledger ledger(Path(), "options");
    ledger.Read();
    EXPECT_EQ(ledger.Find(kWalk), nullptr);
    EXPECT_NE(ledger.Find(kTake), nullptr);
}

TEST_F(LedgerFile, FindsAJobOnlyWithTheSameInputsAndOutput) {
    Ledger(Path(), "options").Start({kTake}, {RowOf(kTake)});
    Ledger ledger(Path(), "options");
    ledger.Read();
    Job other = kTake;
    other.skeleton = "t/08.asf";
    EXPECT_EQ(ledger.Find(other), nullptr);
    other = kTake;
    other.outputs = {"07_01.amc.glb"};
    EXPECT_EQ(ledger.Find(other), nullptr);
    other.outputs = {"07_01.glb", "07_01.npz"};
    EXPECT_EQ(ledger.Find(other), nullptr);
}

TEST_F(LedgerFile, HoldsTheSizesOfAllFiles) {
    Job job = kTake;
    job.outputs = {"a.gltf", "a.npz"};
    job.sideOutputs = {"a.bin"};
    for (const char* name : {"a.gltf", "a.npz", "a.bin"})
        folder_.Write(name, "four");
    Ledger(Path(), "options").Start({job}, {RowOf(job)});
    Ledger ledger(Path(), "options");
    ledger.Read();
    EXPECT_NE(ledger.Find(job), nullptr);
    for (const char* name : {"a.gltf", "a.npz", "a.bin"}) {
        folder_.Write(name, "fiver");
        EXPECT_EQ(ledger.Find(job), nullptr) << name;
        folder_.Write(name, "four");
    }
}

TEST_F(LedgerFile, IsUsedOnlyWithTheSameOptions) {
    Ledger(Path(), "options").Start({kTake}, {RowOf(kTake)});
    Ledger ledger(Path(), "options --bones");
    EXPECT_EQ(ledger.Read(), Ledger::Content::OtherOptions);
    EXPECT_EQ(ledger.Find(kTake), nullptr);
}

TEST_F(LedgerFile, MayBeMissing) {
    Ledger ledger(Path(), "options");
    EXPECT_EQ(ledger.Read(), Ledger::Content::Nothing);
    EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(LedgerFile, GivesNoWrongRowWhenItIsCut) {
    Ledger(Path(), "options").Start({kWalk, kTake}, {RowOf(kWalk), RowOf(kTake)});
    const std::string whole = folder_.Read(dataset::kLedgerName);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        folder_.Write(dataset::kLedgerName, whole.substr(0, length));
        Ledger ledger(Path(), "options");
        ledger.Read();
        EXPECT_EQ(ledger.Find(kTake), nullptr) << length;
        if (const IndexRow* row = ledger.Find(kWalk)) {
            EXPECT_EQ(row->seconds, "2");
        }
    }
}

}  // namespace
