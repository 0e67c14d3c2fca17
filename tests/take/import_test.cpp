#include "take/import.h"

#include <clocale>
#include <csignal>
#include <gmock/gmock.h>
#include <thread>

#include "export/formats.h"
#include "files/system_storage.h"
#include "headless/text.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"
#include "text/wide_text.h"

namespace {

using take::Status;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kBvh[] =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\nEnd Site\n{\nOFFSET 0 1 0\n}\n}\nMOTION\nFrames: 2\nFrame Time: "
    "0.5\n0 1 0 0 0 0\n0 2 0 0 0 0\n";

const take::Plugin& ThePlugin() {
    static const take::LoadedPlugin loaded = take::LoadPlugin(ZKMOCAP_PLUGIN);
    return *loaded.plugin;
}

std::string Sample(const std::string& name) {
    return std::string(ZKMOCAP_EXAMPLES_DIR "/") + name;
}

take::Result Import(const take::Request& request, const take::Listener& listener = {}) {
    files::SystemStorage storage;
    return take::Import(ThePlugin(), request, storage, listener);
}

take::Request Memory(std::string bvh) {
    take::Request request;
    request.file = {"walk.bvh", std::move(bvh)};
    return request;
}

std::string ModelName(const take::Result& result) {
    return text::EncodeUtf8(headless::View(result.Scene().Models().front()->name));
}

TEST(Import, SaysWhatDecidesTheRate) {
    const std::string noRate = std::string(kBvh).replace(std::string(kBvh).find("0.5\n"), 3, "0");
    struct Row {
        std::string bvh;
        std::optional<double> asked;
        take::RateOrigin origin;
        std::optional<double> stated;
    };
    const Row rows[] = {{kBvh, std::nullopt, take::RateOrigin::File, 2.0},
                        {kBvh, 60.0, take::RateOrigin::Request, 2.0},
                        {noRate, std::nullopt, take::RateOrigin::Assumed, std::nullopt},
                        {noRate, 60.0, take::RateOrigin::Request, std::nullopt}};
    for (const Row& row : rows) {
        take::Request request = Memory(row.bvh);
        request.framesPerSecond = row.asked;
        const take::Result result = Import(request);
        EXPECT_EQ(result.rateOrigin, row.origin);
        EXPECT_EQ(result.statedRate, row.stated);
    }
}

TEST(Import, OfAFileAndOfItsBytesGivesTheSame) {
    take::Request fromFile;
    fromFile.file = {Sample("walk.bvh")};
    take::Request fromMemory = fromFile;
    fromMemory.file.content = support::ReadText(Sample("walk.bvh"));
    for (const bool asIs : {false, true}) {
        fromFile.asIs = fromMemory.asIs = asIs;
        const take::Result a = Import(fromFile);
        const take::Result b = Import(fromMemory);
        ASSERT_TRUE(a.IsImported() && b.IsImported()) << b.FirstError();
        text::StringSink first;
        text::StringSink second;
        exporters::Notes notes;
        const exporters::Format& glb = *exporters::FindFormat(".glb");
        EXPECT_EQ(exporters::Write(glb, {a.Scene(), {}}, {first}, notes), "");
        EXPECT_EQ(exporters::Write(glb, {b.Scene(), {}}, {second}, notes), "");
        EXPECT_TRUE(first.Bytes() == second.Bytes());
        EXPECT_EQ(headless::View(a.userInput.strBVHFile), headless::View(b.userInput.strBVHFile));
    }
}

TEST(Import, OfAPairFromMemoryBuildsItsScene) {
    take::Request request;
    request.format = take::Format::Acclaim;
    request.file = {"walk.asf", support::ReadText(Sample("walk.asf"))};
    request.motion = {"walk.amc", support::ReadText(Sample("walk.amc"))};
    const take::Result result = Import(request);
    ASSERT_TRUE(result.IsImported()) << result.FirstError();
    EXPECT_EQ(result.Scene().Models().size(), 1U);
    EXPECT_EQ(result.findings.size(), 2U);
    EXPECT_THAT(text::EncodeUtf8(headless::View(result.userInput.strAMCFile)),
                HasSubstr("/walk.amc"));
}

TEST(Import, LeavesNothingInTheTemporaryFolder) {
    const support::TemporaryFolder temporary;
    setenv("TMPDIR", temporary.Path("").c_str(), 1);
    EXPECT_TRUE(Import(Memory(kBvh)).IsImported());
    EXPECT_FALSE(Import(Memory("no capture\n")).IsImported());
    EXPECT_THAT(temporary.Names(), IsEmpty());
    unsetenv("TMPDIR");
}

TEST(Import, ResultsAreIndependent) {
    take::Request named = Memory(kBvh);
    named.file.path = "first.bvh";
    const take::Result first = Import(named);
    named.file.path = "second.bvh";
    named.useNulls = false;
    const take::Result second = Import(named);
    EXPECT_EQ(ModelName(first), "first");
    EXPECT_EQ(ModelName(second), "second");
    EXPECT_NE(first.Scene().Objects().size(), second.Scene().Objects().size());
}

// The imports wait for each other. Meanwhile, the threads read an earlier result.
TEST(Import, CanBeCalledBySeveralThreads) {
    const take::Result kept = Import(Memory(kBvh));
    std::vector<std::thread> threads;
    std::atomic<int> imported = 0;
    for (int thread = 0; thread < 8; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < 5; ++round) {
                imported += Import(Memory(kBvh)).IsImported() ? 1 : 0;
                text::StringSink out;
                exporters::Notes notes;
                exporters::Write(*exporters::FindFormat(".npz"), {kept.Scene(), {}}, {out}, notes);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(imported, 40);
}

TEST(Import, TellsTheListenerWhatHappens) {
    take::Request request = Memory(kBvh);
    request.hasProgressBar = true;
    std::vector<std::string> events;
    take::Listener listener;
    listener.onSurveyed = [&](const auto&, bool isRefused) {
        events.emplace_back(isRefused ? "refused" : "surveyed");
    };
    listener.onLog = [&](const auto& line) {
        events.push_back(text::EncodeUtf8(headless::View(line.text)));
    };
    bool sawBar = false;
    listener.onBar = [&](const auto&) { sawBar = true; };
    const take::Result result = Import(request, listener);
    ASSERT_GE(events.size(), 2U);
    EXPECT_EQ(events.front(), "surveyed");
    EXPECT_EQ(events.back(), "Imported 1 model successfully");
    EXPECT_TRUE(sawBar);
    EXPECT_EQ(result.outcome.models, 1U);
    EXPECT_FALSE(result.recording.bar.empty());
}

TEST(Import, IsCancelledByTheListener) {
    take::Request request = Memory(kBvh);
    request.hasProgressBar = true;
    take::Listener listener;
    listener.isCancelled = [] { return true; };
    const take::Result result = Import(request, listener);
    EXPECT_EQ(result.outcome.status, Status::Cancelled);
    EXPECT_THAT(result.FirstError(), HasSubstr("User cancelled command"));
}

struct Failure {
    const char* name;
    take::Request request;
    bool isRefused;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const Failure& row) {
    return out << row.name;
}

take::Request AsIs(take::Request request) {
    request.asIs = true;
    return request;
}

take::Request Missing() {
    take::Request request;
    request.file = {"/nonexistent/walk.bvh"};
    return request;
}

take::Request Strict() {
    take::Request request = Memory(kBvh);
    request.file.content->replace(request.file.content->find("Frames: 2"), 9, "Frames: 3");
    request.strict = true;
    return request;
}

class FailedImport : public testing::TestWithParam<Failure> {};

TEST_P(FailedImport, SaysWhyInItsResult) {
    const take::Result result = Import(GetParam().request);
    EXPECT_EQ(result.outcome.status, Status::Failed);
    EXPECT_EQ(result.isRefused, GetParam().isRefused);
    EXPECT_THAT(result.FirstError(), HasSubstr(GetParam().error));
    EXPECT_FALSE(result.IsImported());
    result.Scene().Objects();
}

const Failure kFailures[] = {
    {"MissingFile", Missing(), true, "/nonexistent/walk.bvh: error: no such file [unreadable]"},
    {"MissingFileAsIs", AsIs(Missing()), false, "ERROR: "},
    {"NoCapture", Memory("no capture\n"), true, "walk.bvh: "},
    {"NoCaptureAsIs", AsIs(Memory("no capture\n")), false, "ERROR: BVH file is invalid"},
    {"WarningOfAStrictImport", Strict(), true, "warning: "},
};
INSTANTIATE_TEST_SUITE_P(, FailedImport, testing::ValuesIn(kFailures),
                         [](const auto& row) { return row.param.name; });

// The storage cannot create a temporary folder for the text.
TEST(Import, WithFullStorageHasAProblem) {
    class FullStorage final : public text::Storage {
      public:
        std::unique_ptr<text::StoredText> Read(const std::string& path) override {
            return files::SystemStorage().Read(path);
        }
        std::unique_ptr<text::TemporaryFolder> MakeTemporaryFolder(std::uint64_t) override {
            throw text::WriteError("no room");
        }
    };
    FullStorage storage;
    const take::Result result = take::Import(ThePlugin(), Memory(kBvh), storage);
    EXPECT_EQ(result.outcome.status, Status::Failed);
    EXPECT_EQ(result.FirstError(), "no room");
}

// A temporary folder whose files cannot be written.
class FullFolder final : public text::TemporaryFolder {
  public:
    explicit FullFolder(bool failsAtOnce) : failsAtOnce_(failsAtOnce) {}

    std::unique_ptr<text::TemporaryFile> Create(const std::string&) override {
        class FullFile final : public text::TemporaryFile {
          public:
            explicit FullFile(bool failsAtOnce) : failsAtOnce_(failsAtOnce) {}
            void Write(std::string_view) override {
                if (failsAtOnce_) throw text::WriteError("no room for a byte");
            }
            void Close() override { throw text::WriteError("no room for the rest"); }
            const std::string& Path() const override { return path_; }

          private:
            bool failsAtOnce_;
            std::string path_ = "walk.bvh";
        };
        return std::make_unique<FullFile>(failsAtOnce_);
    }

  private:
    bool failsAtOnce_;
};

struct FullCase {
    const char* name;
    std::string bvh;
    bool failsAtOnce;
    const char* problem;
    std::size_t findings;
};

const std::string kMendedBvh =
    std::string(kBvh).replace(std::string(kBvh).find("Frames: 2"), 9, "Frames: 3");

const FullCase kFullCases[] = {
    {"TextInMemory", kBvh, true, "no room for a byte", 0},
    {"TextInMemoryAtTheEnd", kBvh, false, "no room for the rest", 0},
    {"MendedText", kMendedBvh, true, "no room for a byte", 1},
    {"MendedTextAtTheEnd", kMendedBvh, false, "no room for the rest", 1},
};

class ImportWithFullFolder : public testing::TestWithParam<FullCase> {};

// The findings are reported all the same.
TEST_P(ImportWithFullFolder, HasAProblem) {
    class FullStorage final : public text::Storage {
      public:
        std::unique_ptr<text::StoredText> Read(const std::string& path) override {
            return files::SystemStorage().Read(path);
        }
        std::unique_ptr<text::TemporaryFolder> MakeTemporaryFolder(std::uint64_t bytes) override {
            EXPECT_GE(bytes, GetParam().bvh.size());
            return std::make_unique<FullFolder>(GetParam().failsAtOnce);
        }
    };
    FullStorage storage;
    const take::Result result = take::Import(ThePlugin(), Memory(GetParam().bvh), storage);
    EXPECT_EQ(result.outcome.status, Status::Failed);
    EXPECT_EQ(result.FirstError(), GetParam().problem);
    ASSERT_EQ(result.findings.size(), 1U);
    EXPECT_EQ(result.findings[0].findings.size(), GetParam().findings);
    EXPECT_TRUE(result.Scene().Models().empty());
}

INSTANTIATE_TEST_SUITE_P(, ImportWithFullFolder, testing::ValuesIn(kFullCases),
                         [](const auto& row) { return row.param.name; });

TEST(Import, DoesNotChangeLocaleSignalsAndStreams) {
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    struct sigaction before {};
    sigaction(SIGINT, nullptr, &before);
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Import(Memory(kBvh));
    Import(Memory("no capture\n"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    struct sigaction after {};
    sigaction(SIGINT, nullptr, &after);
    EXPECT_EQ(before.sa_handler, after.sa_handler);
}

}  // namespace
