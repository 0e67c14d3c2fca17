#include "dataset/import_starter.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace import_starter_test {
namespace {

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

std::string TextOf(std::FILE* file) {
    std::string text(1000, '\0');
    std::rewind(file);
    text.resize(std::fread(text.data(), 1, text.size(), file));
    std::fclose(file);
    return text;
}

// Does not use ImportProcess, which would start this program anew if the starter fails, and with
// it these tests.
Ended RunToEnd(ImportStarter& starter, const std::vector<std::string>& arguments) {
    std::FILE* const output = std::tmpfile();
    std::FILE* const errors = std::tmpfile();
    Ended ended{-1, "", ""};
    const pid_t id = starter.Start(arguments, fileno(output), fileno(errors));
    EXPECT_GT(id, 0);
    if (id > 0)
        while (waitpid(id, &ended.waitStatus, 0) < 0 && errno == EINTR) {
        }
    ended.output = TextOf(output);
    ended.errors = TextOf(errors);
    return ended;
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

// Interrupts the functions of the system that wait, again and again.
class Interrupting {
  public:
    Interrupting() {
        struct sigaction action {};
        action.sa_handler = [](int) {};
        sigaction(SIGALRM, &action, &before_);
        const itimerval often{{0, 100}, {0, 100}};
        setitimer(ITIMER_REAL, &often, nullptr);
    }
    ~Interrupting() {
        const itimerval never{};
        setitimer(ITIMER_REAL, &never, nullptr);
        sigaction(SIGALRM, &before_, nullptr);
    }

  private:
    struct sigaction before_ {};
};

TEST(ImportStarter, IsNotDisturbedBySignals) {
    ImportStarter starter({Prepare, RunImport});
    const Interrupting interrupting;
    for (int import = 0; import < 20; ++import)
        EXPECT_EQ(WEXITSTATUS(RunToEnd(starter, {"a", "b"}).waitStatus), 2);
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
