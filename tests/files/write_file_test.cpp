#include "files/write_file.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <new>

#include "files/disk_full.h"
#include "tests/support/temporary_folder.h"
#include "text/byte_sink.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string WriteNew(text::ByteSink& out) {
    out.Write("new");
    return {};
}

TEST(WriteFile, WritesTheWholeFile) {
    const support::TemporaryFolder folder;
    const files::WriteOutcome outcome = files::WriteFile(folder.Path("a"), WriteNew);
    EXPECT_TRUE(outcome.IsWritten());
    EXPECT_EQ(folder.Read("a"), "new");
}

struct FailedWrite {
    const char* name;
    files::FillFile fill;
    const char* problem;  // the message after the path; null if the write is cancelled
};

std::ostream& operator<<(std::ostream& out, const FailedWrite& row) {
    return out << row.name;
}

class WriteFileFails : public testing::TestWithParam<FailedWrite> {};

TEST_P(WriteFileFails, AndKeepsTheOldFile) {
    const support::TemporaryFolder folder;
    folder.Write("a", "old");
    const bool isCancelled = GetParam().problem == nullptr;
    const files::WriteOutcome outcome =
        files::WriteFile(folder.Path("a"), GetParam().fill, [&] { return isCancelled; });
    EXPECT_FALSE(outcome.IsWritten());
    EXPECT_EQ(outcome.isCancelled, isCancelled);
    const std::string start = "cannot write " + folder.Path("a") + ": ";
    EXPECT_EQ(outcome.problem, isCancelled ? "" : start + GetParam().problem);
    EXPECT_EQ(folder.Read("a"), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
}

const FailedWrite kFailedWrites[] = {
    {"ForAReason",
     [](text::ByteSink& out) {
         out.Write("new");
         return std::string("too large");
     },
     "too large"},
    {"WithoutMemory", [](text::ByteSink&) -> std::string { throw std::bad_alloc(); },
     "out of memory"},
    {"WhenCancelled", WriteNew, nullptr},
};
INSTANTIATE_TEST_SUITE_P(, WriteFileFails, testing::ValuesIn(kFailedWrites),
                         [](const auto& row) { return row.param.name; });

TEST(WriteFile, SaysThatTheDiskIsFull) {
    const support::TemporaryFolder folder;
    const auto outcomeOf = [&](const std::function<void()>& fail) {
        return files::WriteFile(folder.Path("a"), [&](text::ByteSink&) {
            fail();
            return std::string();
        });
    };
    const files::WriteOutcome full = outcomeOf([] { throw files::DiskFull("no room"); });
    EXPECT_EQ(full.problem, "no room");
    EXPECT_TRUE(full.isDiskFull);
    const files::WriteOutcome other = outcomeOf([] { throw text::WriteError("too large"); });
    EXPECT_EQ(other.problem, "too large");
    EXPECT_FALSE(other.isDiskFull);
}

TEST(IsDiskFull, IsAboutTheFileSystem) {
    EXPECT_TRUE(files::IsDiskFull(ENOSPC));
    EXPECT_TRUE(files::IsDiskFull(EDQUOT));
    EXPECT_FALSE(files::IsDiskFull(EFBIG));
    EXPECT_FALSE(files::IsDiskFull(EACCES));
}

TEST(WriteFile, SaysWhereItCannotWrite) {
    const support::TemporaryFolder folder;
    const files::WriteOutcome outcome = files::WriteFile(folder.Path("none/a"), WriteNew);
    EXPECT_THAT(outcome.problem, HasSubstr("none/a: No such file or directory"));
    EXPECT_FALSE(outcome.isCancelled);
}

TEST(WriteFilePair, WritesBothOrNeither) {
    const support::TemporaryFolder folder;
    const auto write = [&](const std::string& reason) {
        return files::WriteFilePair(folder.Path("a"), folder.Path("a.bin"),
                                    [&](text::ByteSink& out, text::ByteSink& side) {
                                        out.Write("text");
                                        side.Write("numbers");
                                        return reason;
                                    });
    };
    EXPECT_THAT(write("too large").problem, HasSubstr("/a: too large"));
    EXPECT_THAT(folder.Names(), IsEmpty());
    EXPECT_TRUE(write("").IsWritten());
    EXPECT_EQ(folder.Read("a"), "text");
    EXPECT_EQ(folder.Read("a.bin"), "numbers");
}

}  // namespace
