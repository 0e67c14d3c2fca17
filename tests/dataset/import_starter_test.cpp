#include "dataset/import_starter.h"

#include <csignal>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "dataset/import_process.h"

namespace import_starter_test {
namespace {

using dataset::ImportProcess;
using dataset::ImportStarter;

int prepared = 0;
int setLater = 0;
bool startsThread = false;

void Prepare() {
    ++prepared;
    if (startsThread) std::thread([] { pause(); }).detach();
}

// What the imports of these tests do.
int RunImport(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"abort"}) {
        std::signal(SIGABRT, SIG_DFL);
        abort();
    }
    for (const std::string& argument : arguments)
        std::printf("[%s]", argument.c_str());
    std::printf(" prepared %d, set later %d, parent %d", prepared, setLater, getppid());
    std::fflush(stdout);
    std::fprintf(stderr, "an error");
    return static_cast<int>(arguments.size());
}

struct Ended {
    int waitStatus;
    std::string output;
    std::string errors;
};

Ended RunToEnd(ImportStarter& starter, const std::vector<std::string>& arguments) {
    ImportProcess process(arguments, &starter);
    while (!process.Reap()) {
        pollfd file{process.OutputFile(), POLLIN, 0};
        poll(&file, 1, 1);
        process.Read();
    }
    return {process.WaitStatus(), process.Output(), process.Errors()};
}

std::vector<pid_t> Children() {
    const std::string own = std::to_string(getpid());
    std::ifstream file("/proc/" + own + "/task/" + own + "/children");
    return {std::istream_iterator<pid_t>(file), std::istream_iterator<pid_t>()};
}

TEST(ImportStarter, RunsEachImportInAChildOfThisProcess) {
    ImportStarter starter({Prepare, RunImport});
    // The starter was made before. It does not grow with what this process does after that.
    setLater = 1;
    const std::string parent = std::to_string(getpid());
    const std::vector<std::vector<std::string>> imports = {{"a b", "", "c\nd"}, {"é"}};
    const std::vector<std::string> outputs = {"[a b][][c\nd]", "[é]"};
    for (std::size_t index = 0; index < imports.size(); ++index) {
        const Ended ended = RunToEnd(starter, imports[index]);
        ASSERT_TRUE(WIFEXITED(ended.waitStatus));
        EXPECT_EQ(WEXITSTATUS(ended.waitStatus), static_cast<int>(imports[index].size()));
        EXPECT_EQ(ended.output, outputs[index] + " prepared 1, set later 0, parent " + parent);
        EXPECT_EQ(ended.errors, "an error");
    }
    EXPECT_TRUE(starter.CanStart());
    setLater = 0;
}

TEST(ImportStarter, OutlivesAnImportThatCrashes) {
    ImportStarter starter({Prepare, RunImport});
    const Ended crashed = RunToEnd(starter, {"abort"});
    EXPECT_TRUE(WIFSIGNALED(crashed.waitStatus) && WTERMSIG(crashed.waitStatus) == SIGABRT);
    EXPECT_EQ(WEXITSTATUS(RunToEnd(starter, {"next"}).waitStatus), 1);
    EXPECT_TRUE(starter.CanStart());
}

TEST(ImportStarter, EndsWithItsObject) {
    const std::vector<pid_t> before = Children();
    {
        const ImportStarter starter({Prepare, RunImport});
        EXPECT_EQ(Children().size(), before.size() + 1);
    }
    EXPECT_EQ(Children(), before);
}

struct Trouble {
    const char* name;
    bool startsThread;
    bool killsStarter;
    std::size_t bytes;  // of the command line
};

void PrintTo(const Trouble& trouble, std::ostream* out) {
    *out << trouble.name;
}

class ImportStarterTrouble : public testing::TestWithParam<Trouble> {};

// The caller then starts the program anew for each import.
TEST_P(ImportStarterTrouble, IsReported) {
    startsThread = GetParam().startsThread;
    ImportStarter starter({Prepare, RunImport});
    if (GetParam().killsStarter) kill(Children().back(), SIGKILL);
    EXPECT_EQ(starter.Start({std::string(GetParam().bytes, 'x')}, STDOUT_FILENO, STDERR_FILENO),
              -1);
    EXPECT_FALSE(starter.CanStart());
    startsThread = false;
}

const Trouble kTroubles[] = {
    {"APluginThatStartsAThread", true, false, 10},
    {"AStarterThatWasKilled", false, true, 10},
    {"ALongCommandLine", false, false, 100'000},
};
INSTANTIATE_TEST_SUITE_P(, ImportStarterTrouble, testing::ValuesIn(kTroubles),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace import_starter_test
