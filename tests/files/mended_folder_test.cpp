#include "files/mended_folder.h"

#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "files/mended_watch.h"
#include "files/system_storage.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "text/byte_sink.h"

namespace {

using files::MendedFolder;

std::string FolderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

TEST(MendedFolder, HoldsFilesForThisUserAlone) {
    std::string path;
    {
        MendedFolder folder(100);
        path = folder.Write("walk.bvh", "HIERARCHY\n");
        EXPECT_TRUE(path.ends_with("/walk.bvh")) << path;
        struct stat status {};
        ASSERT_EQ(stat(FolderOf(path).c_str(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U);
        EXPECT_EQ(support::ReadText(path), "HIERARCHY\n");
        folder.Write("walk.amc", "");
        EXPECT_THROW(folder.Write("third.amc", ""), text::WriteError);
    }
    EXPECT_FALSE(std::filesystem::exists(FolderOf(path)));
}

TEST(MendedFolder, HoldsFilesThatAreWrittenInPieces) {
    MendedFolder folder(100);
    const auto file = folder.Create("walk.bvh");
    const auto other = folder.Create("walk.amc");
    file->Write("HIER");
    other->Write("1\n");
    file->Write("");
    file->Write("ARCHY\n");
    file->Close();
    EXPECT_EQ(support::ReadText(file->Path()), "HIERARCHY\n");
    other->Close();
    EXPECT_EQ(support::ReadText(other->Path()), "1\n");
    EXPECT_THROW(folder.Create("third.amc"), text::WriteError);
}

// The system refuses bytes beyond a limit.
TEST(MendedFolder, SaysWhichFileCannotBeWritten) {
    MendedFolder folder(100);
    const auto file = folder.Create("walk.bvh");
    struct rlimit limit {};
    getrlimit(RLIMIT_FSIZE, &limit);
    const struct rlimit small { 4096, limit.rlim_max };
    const auto former = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    std::string problem;
    try {
        file->Write(std::string(5000, 'x'));
    } catch (const text::WriteError& error) {
        problem = error.what();
    }
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, former);
    EXPECT_EQ(problem, "cannot write " + file->Path() + ": File too large");
}

TEST(MendedFolder, IsCreatedInTmpdirIfMemoryHasNoRoom) {
    const support::TemporaryFolder temporary;
    setenv("TMPDIR", temporary.Path("").c_str(), 1);
    {
        MendedFolder folder(std::size_t{1} << 60U);
        EXPECT_TRUE(folder.Write("walk.bvh", "x").starts_with(temporary.Path("")));
        EXPECT_EQ(temporary.Names().size(), 1U);
    }
    EXPECT_TRUE(temporary.Names().empty());
    setenv("TMPDIR", temporary.Path("missing").c_str(), 1);
    EXPECT_THROW(MendedFolder(std::size_t{1} << 60U), text::WriteError);
    unsetenv("TMPDIR");
}

// Starts a child process, which creates a folder in `temporary` and calls `end` to end itself.
// Returns the status with which it ended.
template <class End>
int StatusOfChild(const support::TemporaryFolder& temporary, End end) {
    const pid_t child = fork();
    if (child == 0) {
        setenv("TMPDIR", temporary.Path("").c_str(), 1);
        files::SystemStorage storage(true);
        const auto folder = storage.MakeTemporaryFolder(std::size_t{1} << 60U);
        folder->Write("walk.bvh", "x");
        end();
        _exit(99);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

class EndOfAProcess : public testing::TestWithParam<int> {};

TEST_P(EndOfAProcess, LeavesNoFolder) {
    const support::TemporaryFolder temporary;
    const int status = StatusOfChild(temporary, [] { raise(GetParam()); });
    // The handlers of a sanitizer may end the process with a status instead of the signal.
    EXPECT_TRUE(WIFSIGNALED(status) || (WEXITSTATUS(status) != 0 && WEXITSTATUS(status) != 99));
    EXPECT_TRUE(temporary.Names().empty());
}

// After the watch ends, signals are handled as before.
TEST(MendedFolderWatch, RestoresTheHandlers) {
    struct sigaction before {};
    sigaction(SIGTERM, nullptr, &before);
    {
        const files::MendedFolderWatch watch;
        struct sigaction during {};
        sigaction(SIGTERM, nullptr, &during);
        EXPECT_NE(during.sa_handler, before.sa_handler);
    }
    struct sigaction after {};
    sigaction(SIGTERM, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
}

// A library must not handle signals.
TEST(SystemStorage, HandlesNoSignalUnlessAsked) {
    struct sigaction before {};
    sigaction(SIGTERM, nullptr, &before);
    const auto folder = files::SystemStorage().MakeTemporaryFolder(1);
    struct sigaction during {};
    sigaction(SIGTERM, nullptr, &during);
    EXPECT_EQ(during.sa_handler, before.sa_handler);
}

INSTANTIATE_TEST_SUITE_P(, EndOfAProcess,
                         testing::Values(SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGTERM,
                                         SIGINT, SIGHUP, SIGPIPE, SIGQUIT));

TEST(MendedFolders, AreRemovedForAProcessThatWasKilled) {
    const support::TemporaryFolder temporary;
    pid_t id = 0;
    const pid_t child = fork();
    if (child == 0) {
        setenv("TMPDIR", temporary.Path("").c_str(), 1);
        MendedFolder folder(std::size_t{1} << 60U);
        folder.Write("walk.bvh", "x");
        raise(SIGKILL);
    }
    id = child;
    waitpid(child, nullptr, 0);
    EXPECT_EQ(temporary.Names().size(), 1U);
    setenv("TMPDIR", temporary.Path("").c_str(), 1);
    files::RemoveMendedFolders(id + 1);
    EXPECT_EQ(temporary.Names().size(), 1U);
    files::RemoveMendedFolders(id);
    EXPECT_TRUE(temporary.Names().empty());
    unsetenv("TMPDIR");
}

}  // namespace
