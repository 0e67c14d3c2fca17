#include "files/output_file.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include "files/disk_full.h"
#include "tests/support/temporary_folder.h"
#include "text/byte_sink.h"

namespace {

using files::OutputFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string MessageOf(const std::string& path) {
    try {
        OutputFile file(path);
        file.Commit();
    } catch (const text::WriteError& error) {
        return error.what();
    }
    return {};
}

TEST(OutputFile, AppearsWhenItIsWhole) {
    const support::TemporaryFolder folder;
    OutputFile file(folder.Path("a.json"));
    file.Write("one ");
    EXPECT_FALSE(std::filesystem::exists(folder.Path("a.json")));
    file.Write("two");
    file.Commit();
    EXPECT_EQ(folder.Read("a.json"), "one two");
    EXPECT_THAT(folder.Names(), ElementsAre("a.json"));
}

TEST(OutputFile, TakesSkippedBytesLater) {
    const support::TemporaryFolder folder;
    OutputFile file(folder.Path("a.npz"));
    const std::string large(OutputFile::kBufferSize + 3, 'x');
    file.Write("ab");
    ASSERT_TRUE(file.CanSkip());
    EXPECT_EQ(file.Skip(4), 2U);
    file.Write("gh");
    EXPECT_EQ(file.Skip(large.size()), 8U);
    file.WriteAt(4, "ef");
    file.WriteAt(8, large);
    file.WriteAt(2, "cd");
    file.Commit();
    EXPECT_EQ(folder.Read("a.npz"), "abcdefgh" + large);
}

// Each of the two parts would fit alone.
TEST(OutputFile, RefusesToSkipMoreThanFits) {
    const support::TemporaryFolder folder;
    OutputFile file(folder.Path("a.npz"));
    struct statvfs space {};
    ASSERT_EQ(statvfs(folder.Path("").c_str(), &space), 0);
    const std::uint64_t most = std::uint64_t{space.f_bavail} * space.f_frsize;
    file.Skip(most / 3 * 2);
    EXPECT_THROW(file.Skip(most / 3 * 2), files::DiskFull);
}

TEST(OutputFile, AsksWhetherToStopBeforeSkippedBytes) {
    const support::TemporaryFolder folder;
    folder.Write("a.npz", "old");
    bool isCancelled = false;
    {
        OutputFile file(folder.Path("a.npz"), [&] { return isCancelled; });
        file.Skip(2);
        file.WriteAt(0, "a");
        isCancelled = true;
        EXPECT_THROW(file.WriteAt(1, "b"), text::WriteCancelled);
    }
    EXPECT_EQ(folder.Read("a.npz"), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("a.npz"));
}

TEST(OutputFile, LeavesNothingWithoutCommit) {
    const support::TemporaryFolder folder;
    { OutputFile(folder.Path("a.json")).Write("text"); }
    EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST(OutputFile, LeavesTheOldFileWithoutCommit) {
    const support::TemporaryFolder folder;
    folder.Write("a.json", "old");
    { OutputFile(folder.Path("a.json")).Write("new"); }
    EXPECT_EQ(folder.Read("a.json"), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("a.json"));
}

TEST(TwoOutputFiles, AppearTogether) {
    const support::TemporaryFolder folder;
    folder.Write("a.bin", "old numbers");
    OutputFile first(folder.Path("a.bin"));
    OutputFile second(folder.Path("a.gltf"));
    first.Write("new numbers");
    second.Write("new text");
    OutputFile::CommitBoth(first, second);
    EXPECT_EQ(folder.Read("a.bin"), "new numbers");
    EXPECT_EQ(folder.Read("a.gltf"), "new text");
    EXPECT_EQ(folder.Names().size(), 2U);
}

// A folder that is created with the second name at the last moment makes the renaming fail.
TEST(TwoOutputFiles, RestoreTheFirstIfTheSecondFails) {
    for (const bool hadNumbers : {true, false}) {
        const support::TemporaryFolder folder;
        if (hadNumbers) folder.Write("a.bin", "old numbers");
        {
            OutputFile first(folder.Path("a.bin"));
            OutputFile second(folder.Path("a.gltf"));
            first.Write("new numbers");
            std::filesystem::create_directory(folder.Path("a.gltf"));
            EXPECT_THROW(OutputFile::CommitBoth(first, second), text::WriteError);
        }
        EXPECT_EQ(std::filesystem::exists(folder.Path("a.bin")), hadNumbers);
        if (hadNumbers) {
            EXPECT_EQ(folder.Read("a.bin"), "old numbers");
        }
        EXPECT_EQ(folder.Names().size(), hadNumbers ? 2U : 1U);
    }
}

TEST(TwoOutputFiles, KeepTheOldFilesIfTheFirstFails) {
    const support::TemporaryFolder folder;
    folder.Write("a.bin", "old numbers");
    {
        OutputFile first(folder.Path("a.bin"));
        const auto names = folder.Names();
        OutputFile second(folder.Path("a.gltf"));
        for (const std::string& name : names)
            if (files::IsTemporaryName(name)) std::filesystem::remove(folder.Path(name));
        EXPECT_THROW(OutputFile::CommitBoth(first, second), text::WriteError);
    }
    EXPECT_EQ(folder.Read("a.bin"), "old numbers");
    EXPECT_THAT(folder.Names(), ElementsAre("a.bin"));
}

TEST(OutputFile, WritesTheSameBytesInPiecesOfAnySize) {
    const support::TemporaryFolder folder;
    std::string expected;
    OutputFile file(folder.Path("a.json"));
    for (const std::size_t size :
         {std::size_t{1}, OutputFile::kBufferSize - 1, std::size_t{1}, OutputFile::kBufferSize,
          3 * OutputFile::kBufferSize + 7, std::size_t{0}, std::size_t{5}}) {
        std::string piece(size, ' ');
        for (std::size_t index = 0; index < size; ++index)
            piece[index] = static_cast<char>((expected.size() + index) * 31 % 251);
        file.Write(piece);
        expected += piece;
    }
    file.Commit();
    EXPECT_TRUE(folder.Read("a.json") == expected);
}

TEST(OutputFile, KeepsThePermissionsOfWhatItReplaces) {
    const support::TemporaryFolder folder;
    folder.Write("a.json", "old");
    std::filesystem::permissions(folder.Path("a.json"), std::filesystem::perms(0640));
    OutputFile file(folder.Path("a.json"));
    file.Commit();
    EXPECT_EQ(std::filesystem::status(folder.Path("a.json")).permissions(),
              std::filesystem::perms(0640));
}

TEST(OutputFile, FollowsASymbolicLink) {
    const support::TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("real"));
    std::filesystem::create_symlink("real/b.json", folder.Path("a.json"));
    OutputFile file(folder.Path("a.json"));
    file.Write("text");
    file.Commit();
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("a.json")));
    EXPECT_EQ(folder.Read("real/b.json"), "text");
}

TEST(OutputFile, SaysWhyItCannotBeWritten) {
    const support::TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path("folder.json"));
    std::filesystem::create_symlink("/dev/full", folder.Path("full.json"));
    folder.Write("file", "");
    EXPECT_THAT(MessageOf(folder.Path("none/a.json")), HasSubstr("No such file or directory"));
    EXPECT_THAT(MessageOf(folder.Path("file/a.json")), HasSubstr("Not a directory"));
    EXPECT_THAT(MessageOf(folder.Path("folder.json")), HasSubstr("not a regular file"));
    EXPECT_THAT(MessageOf(folder.Path("full.json")), HasSubstr("not a regular file"));
    EXPECT_THAT(folder.Names(), ElementsAre("file", "folder.json", "full.json"));
}

// The largest file of this process has 4096 bytes while `write` is called.
template <class Write>
void LeavesTheOldFileWhenFull(const Write& write) {
    const support::TemporaryFolder folder;
    folder.Write("a.json", "old");
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    rlimit small = limit;
    small.rlim_cur = 4096;
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(
        {
            OutputFile file(folder.Path("a.json"));
            write(file);
            file.Commit();
        },
        text::WriteError);
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(folder.Read("a.json"), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("a.json"));
}

TEST(OutputFile, LeavesTheOldFileWhenTheDiskIsFull) {
    LeavesTheOldFileWhenFull([](OutputFile& file) { file.Write(std::string(8192, 'x')); });
    LeavesTheOldFileWhenFull([](OutputFile& file) {
        file.Skip(8192);
        file.WriteAt(0, std::string(8192, 'x'));
    });
}

}  // namespace
