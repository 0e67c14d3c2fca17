// Compares a motion that is read in rows, on one thread and on several, with one that is read value
// by value: the same status, message, position, polls and keys.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "bvh/bvh_parser.h"
#include "threads/thread_count.h"

namespace rows_test {
namespace {

// Everything that a caller can see of the parsing of one section.
struct Seen {
    std::int32_t status = 0;
    std::wstring message;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::uint32_t position = 0;
    std::string calls;  // "p" for a poll, "a" for a step
    std::vector<std::uint64_t> keys;
    bool operator==(const Seen&) const = default;
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << "status " << seen.status << ", \""
         << std::string(seen.message.begin(), seen.message.end()) << "\" at " << seen.line << ':'
         << seen.column << ", position " << seen.position << ", " << seen.calls << ", keys";
    for (const std::uint64_t key : seen.keys)
        *out << ' ' << std::bit_cast<double>(key);
}

class Recorder : public ParseMonitor {
  public:
    explicit Recorder(int cancelAt) : cancelAt_(cancelAt) {}
    bool IsCancelled() override {
        calls += 'p';
        return ++polls_ == cancelAt_;
    }
    void Advance(unsigned int steps) override { calls += std::string(steps, 'a'); }

    std::string calls;

  private:
    int cancelAt_;
    int polls_ = 0;
};

Seen Parse(const std::string& text, bool rows, int cancelAt = 0) {
    CStringFile file;
    EXPECT_TRUE(file.ReadMemory(text));
    MocapSkeleton skeleton;
    FileAllowances allowances;
    allowances.Reset(text.size());
    Recorder recorder(cancelAt);
    ::BvhParser parser(file, skeleton, allowances, recorder);
    parser.ReadRows(rows);
    file.GetNextString();
    Seen seen;
    seen.status = parser.ParseHierarchy(nullptr);
    if (seen.status == 0) seen.status = parser.ParseMotion();
    seen.message = parser.LastError().message;
    seen.line = parser.LastError().line;
    seen.column = parser.LastError().column;
    seen.position = file.GetPosition();
    seen.calls = recorder.calls;
    for (const auto& node : skeleton.models)
        for (const auto& slot : node->channels)
            for (std::uint32_t frame = 0; slot.keys && frame < skeleton.frameCount; ++frame)
                for (const double number : {slot.keys[frame].time, slot.keys[frame].value})
                    seen.keys.push_back(std::bit_cast<std::uint64_t>(number));
    return seen;
}

class Threads {
  public:
    explicit Threads(int count) { setenv(threads::kVariable, std::to_string(count).c_str(), 1); }
    ~Threads() { unsetenv(threads::kVariable); }
    Threads(const Threads&) = delete;
    Threads& operator=(const Threads&) = delete;
};

constexpr int kThreads[] = {1, 2, 5};

void ExpectSame(const std::string& text, int cancelAt = 0) {
    const Seen one = Parse(text, false, cancelAt);
    for (const int count : kThreads) {
        const Threads threads(count);
        EXPECT_EQ(Parse(text, true, cancelAt), one) << count << " threads";
    }
}

std::string Head(int channels, int frames) {
    std::string text = "HIERARCHY\nROOT A\n{\nOFFSET 0 1 0\nCHANNELS " + std::to_string(channels);
    static constexpr const char* kNames[] = {" Xposition", " Yposition", " Zposition",
                                             " Zrotation", " Xrotation", " Yrotation"};
    for (int i = 0; i < channels; ++i)
        text += kNames[i];
    return text + "\n}\nMOTION\nFrames: " + std::to_string(frames) + "\nFrame Time: 0.01\n";
}

std::string Numbers(int first, int count, const char* end) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i == 0 ? "" : " ") + std::to_string(0.37 * (first + i) - 20.0);
    return text + end;
}

// A motion of three channels and forty frames.
std::string Motion(const char* end = "\n", const char* last = nullptr) {
    std::string text = Head(3, 40);
    for (int frame = 0; frame < 40; ++frame)
        text += Numbers(3 * frame, 3, frame == 39 && last != nullptr ? last : end);
    return text;
}

// Replaces the row with this index, counted from 0.
std::string WithRow(int row, const std::string& with) {
    const std::string text = Motion();
    std::size_t at = Head(3, 40).size();
    for (int i = 0; i < row; ++i)
        at = text.find('\n', at) + 1;
    return text.substr(0, at) + with + text.substr(text.find('\n', at) + 1);
}

struct Row {
    const char* name;
    std::string text;
};
void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    {"Plain", Motion()},
    {"CarriageReturns", Motion("\r\n")},
    {"OldMacintosh", Motion("\r")},
    {"NoLineFeedAtTheEnd", Motion("\n", "")},
    {"BlanksAtTheEnd", Motion("\n", " \t\r\n \n\n")},
    {"BlanksAfterEachRow", Motion(" \t \n")},
    {"BlankLines", Motion("\n\n")},
    {"AnotherSection", Motion() + Motion()},
    {"TextAfterTheMotion", Motion() + "1 2 3\n4 x\n"},
    {"OneLine", Motion(" ")},
    {"OneBlankLine", WithRow(17, "1 2 3\n\n")},
    {"RowOverTwoLines", WithRow(17, "1 2\n3\n")},
    {"TwoRowsOnALine", WithRow(17, "1 2 3 4 5 6\n")},
    {"TooManyValues", WithRow(17, "1 2 3 4\n")},
    {"TooFewValues", WithRow(17, "1 2\n")},
    {"Tabs", WithRow(17, "\t1\t2\t\t3\t\n")},
    {"Word", WithRow(17, "1 2 x\n")},
    {"WordInTheFirstRow", WithRow(0, "x 2 3\n")},
    {"WordInTheLastRow", WithRow(39, "1 2 x\n")},
    {"TwoWords", WithRow(30, "1 x 3\n") + "x"},
    {"ZeroThatIsRefused", WithRow(17, "1 .0 3\n")},
    {"Zeros", WithRow(17, "0 -0 -0.000\n")},
    {"MoreZeros", WithRow(17, "0e5 0x -0.0e1\n")},
    {"Exponents", WithRow(17, "1e-5 -2.5E+3 1e400\n")},
    {"NotNumbers", WithRow(17, "nan inf -inf\n")},
    {"Hexadecimal", WithRow(17, "0x1p3 +4 .5\n")},
    {"Tails", WithRow(17, "1abc 2,5 3.4.5\n")},
    {"LongNumbers",
     WithRow(17, "0.1234567890123456789012 12345678901234567890 9007199254740993\n")},
    {"VeryLongNumber", WithRow(17, "1 2 " + std::string(2000, '3') + "\n")},
    {"VeryLongZero", WithRow(17, "1 0." + std::string(2000, '0') + " 3\n")},
    {"FormFeed", WithRow(17, "1 \f2 3\n")},
    {"FormFeedAlone", WithRow(17, "1 \f 3\n")},
    {"Nul", WithRow(17, std::string("1 2\0 3\n", 7))},
    {"NulAfterARow", WithRow(17, std::string("1 2 3\0\n", 7))},
    {"NoRows", Head(3, 40)},
    {"NoRowsAndNoLineFeed", Head(3, 1).substr(0, Head(3, 1).size() - 1)},
    {"MoreFramesThanRows", Head(3, 41) + Motion().substr(Head(3, 40).size()) + "9 9\n"},
    {"NoFrames", Head(3, 0) + "1 2 3\n"},
    {"OneFrame", Head(6, 1) + Numbers(1, 6, "\n")},
    {"AbsurdFrames", Head(6, 2000000000) + Numbers(1, 6, "\n")},
};

class BvhRows : public testing::TestWithParam<Row> {};

TEST_P(BvhRows, AreReadLikeSingleValues) {
    ExpectSame(GetParam().text);
}

TEST_P(BvhRows, CanBeCancelledAtEachPoll) {
    const Seen whole = Parse(GetParam().text, false);
    const auto polls = std::count(whole.calls.begin(), whole.calls.end(), 'p');
    for (int poll = 1; poll <= polls; ++poll)
        ExpectSame(GetParam().text, poll);
}

INSTANTIATE_TEST_SUITE_P(, BvhRows, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BvhRowsCut, AreReadLikeSingleValuesAtEachByte) {
    const std::string text = Motion();
    for (std::size_t size = Head(3, 40).size() - 2; size < text.size(); ++size)
        ExpectSame(text.substr(0, size));
}

TEST(BvhRowsChanged, AreReadLikeSingleValues) {
    std::mt19937_64 random(7);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    static constexpr char kBytes[] = "\n\n  \t\r\f--..00e5+x";
    const std::string text = Motion();
    const std::size_t head = Head(3, 40).size();
    for (int i = 0; i < 400; ++i) {
        std::string changed = text;
        for (std::size_t changes = 1 + below(3); changes > 0; --changes)
            changed[head + below(text.size() - head)] = kBytes[below(sizeof(kBytes))];
        ExpectSame(changed, static_cast<int>(below(4) * 20));
    }
}

// The files of tests/quirks have the mistakes that real files have.
TEST(BvhRowsQuirks, AreReadLikeSingleValues) {
    const std::filesystem::path folder =
        std::filesystem::path(ZKMOCAP_SOURCE_DIR) / "tests" / "quirks";
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.path().extension() != ".bvh") continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(file), {});
        if (text.empty()) continue;
        ExpectSame(text);
        ++files;
    }
    EXPECT_GT(files, 100);
}

// Many blocks, and rows of many lengths.
TEST(BvhRowsLong, AreReadLikeSingleValues) {
    std::mt19937_64 random(8);
    std::string text = Head(6, 5000);
    for (int frame = 0; frame < 5000; ++frame) {
        for (int i = 0; i < 6; ++i) {
            std::string number =
                std::to_string(static_cast<double>(random() % 2000000) / 3e3 - 333);
            number.resize(1 + random() % number.size());
            text += (number == "-" ? "0" : number) + std::string(1 + random() % 3, ' ');
        }
        text += '\n';
    }
    ExpectSame(text);
    for (int poll = 1; poll <= 50; poll += 7)
        ExpectSame(text, poll);
}

}  // namespace
}  // namespace rows_test
