// What the parser asks its monitor and reports to it while it runs, without an importer.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;

// Records what the parser asks and reports. Cancels at poll `cancelAt`, counted from 1; 0 never
// cancels.
class Monitor : public ParseMonitor {
  public:
    explicit Monitor(int cancelAt = 0) : cancelAt_(cancelAt) {}
    bool IsCancelled() override {
        ++polls;
        return polls == cancelAt_;
    }
    void Advance(unsigned int steps) override { advances.push_back(steps); }
    void Warn(const std::wstring& message) override { warnings.push_back(message); }

    int polls = 0;
    std::vector<unsigned int> advances;
    std::vector<std::wstring> warnings;

  private:
    int cancelAt_;
};

// Parses a skeleton with the parser alone and, if that succeeds, a motion for it.
class Pair {
  public:
    explicit Pair(ParseMonitor& monitor) : parser_(file_, skeleton_, allowances_, monitor) {}

    std::int32_t Parse(const std::string& asf, const std::string& amc) {
        std::int32_t status = Open(asf) ? parser_.ParseVersion() : -1;
        if (status >= 0) status = parser_.ParseASF();
        if (status < 0) return status;
        parser_.ForgetFile();
        status = Open(amc) ? parser_.ParseMotionHeader() : -1;
        return status < 0 ? status : parser_.ParseAMC();
    }
    std::wstring Message() const { return parser_.LastError().message; }

  private:
    bool Open(const std::string& text) {
        const bool holdsText = file_.ReadMemory(text);
        allowances_.Reset(file_.GetSize());
        return holdsText;
    }

    CStringFile file_;
    MocapSkeleton skeleton_;
    FileAllowances allowances_;
    AcclaimParser parser_;
};

TEST(AcclaimMonitor, IsToldTheProgressOfEachSection) {
    Monitor monitor;
    EXPECT_EQ(Pair(monitor).Parse(kSampleAsf, kSampleAmc), 0);
    // The name, the root, the bones and the hierarchy of the skeleton; three parts of the motion.
    EXPECT_EQ(monitor.advances, (std::vector<unsigned int>{2, 3, 6, 4, 10, 10, 10}));
    EXPECT_TRUE(monitor.warnings.empty());
}

TEST(AcclaimMonitor, MayCancelAtEachPoll) {
    Monitor all;
    ASSERT_EQ(Pair(all).Parse(kSampleAsf, kSampleAmc), 0);
    // There is a poll for each section, node, value and channel, and a few more.
    ASSERT_GT(all.polls, 60);
    for (int poll = 1; poll <= all.polls; ++poll) {
        Monitor monitor(poll);
        Pair pair(monitor);
        EXPECT_EQ(StatusText(pair.Parse(kSampleAsf, kSampleAmc)), "0x800704C7") << poll;
        EXPECT_EQ(pair.Message(), L"User cancelled command");
        EXPECT_EQ(monitor.polls, poll);
    }
}

TEST(AcclaimMonitor, IsToldEachWarning) {
    Monitor monitor;
    EXPECT_EQ(Pair(monitor).Parse(":version 1\n:root order tx",
                                  ":fully-specified\n1\nroot 1\nlost\n2\nroot 2\n"),
              0);
    EXPECT_EQ(monitor.warnings,
              (std::vector<std::wstring>{L"Invalid keyword found (lost) at line 4, ignoring..."}));
}

struct HeaderRow {
    const char* name;
    const char* amc;
    const wchar_t* message;
    const char* status;
};
void PrintTo(const HeaderRow& row, std::ostream* out) {
    *out << row.name;
}
const HeaderRow kHeaders[] = {
    {"NotFullySpecified", ":degrees\n1\n",
     L"AMC file is invalid. Only ':fully-specified' motion files are supported", "0x800703EE"},
    {"NothingAfterIt", ":fully-specified\n", L"Unexpected end of file", "0x80070570"},
    {"UnknownKeyword", ":fully-specified\n:turns\n1\n", L"Unknown keyword", "0x8007000D"},
    {"OtherUnit", ":fully-specified\n:radians\n1\n",
     L"Incompatible AMC file. File must use same angle units as the ASF file", "0x800703EE"},
};

class MotionHeader : public testing::TestWithParam<HeaderRow> {};

TEST_P(MotionHeader, IsRefusedByTheParser) {
    Monitor monitor;
    Pair pair(monitor);
    EXPECT_EQ(StatusText(pair.Parse(":version 1\n:root order tx", GetParam().amc)),
              GetParam().status);
    EXPECT_EQ(pair.Message(), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(, MotionHeader, testing::ValuesIn(kHeaders),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
