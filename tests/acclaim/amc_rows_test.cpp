// Compares a motion that is read in rows, on one thread and on several, with one that is read value
// by value: the same status, message, position, calls of the monitor, and keys.
#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "acclaim/acclaim_parser.h"
#include "threads/thread_count.h"

namespace amc_rows_test {
namespace {

// Everything that a caller can see of the parsing of one motion.
struct Seen {
    std::int32_t status = 0;
    std::wstring message;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
    std::uint32_t position = 0;
    std::uint32_t frames = 0;
    std::uint32_t lastFrame = 0;
    std::wstring calls;  // "p" for a poll, "a" for a step; and the warnings
    std::vector<std::uint64_t> keys;
    bool operator==(const Seen&) const = default;
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << "status " << seen.status << ", \""
         << std::string(seen.message.begin(), seen.message.end()) << "\" at " << seen.line << ':'
         << seen.column << ", position " << seen.position << ", " << seen.calls.size() << " calls, "
         << seen.frames << " frames to " << seen.lastFrame << ", keys";
    for (const std::uint64_t key : seen.keys)
        *out << ' ' << std::bit_cast<double>(key);
}

class Recorder : public ParseMonitor {
  public:
    explicit Recorder(int cancelAt) : cancelAt_(cancelAt) {}
    bool IsCancelled() override {
        calls += L'p';
        return ++polls_ == cancelAt_;
    }
    void Restart(int cancelAt) {
        calls.clear();
        polls_ = 0;
        cancelAt_ = cancelAt;
    }
    void Advance(unsigned int steps) override { calls += std::wstring(steps, L'a'); }
    void Warn(const std::wstring& message) override { calls += message; }

    std::wstring calls;

  private:
    int cancelAt_;
    int polls_ = 0;
};

const char kSkeleton[] = R"(:version 1.10
:name S
:units
 mass 1.0
 length 2.0
 angle deg
:root
 order TX TY TZ RX RY RZ
 axis XYZ
 position 0 0 0
 orientation 0 0 0
:bonedata
 begin
  id 1
  name a
  direction 0 1 0
  length 1
  axis 0 0 0 XYZ
  dof rx ry rz
  limits (-20 20)
   (-10 30)
   (0 5)
 end
 begin
  id 2
  name b
  direction 0 1 0
  length 1
  axis 10 20 30 XYZ
  dof tx |
  limits (-20 20)
   (0 9)
 end
:hierarchy
 begin
  root a
  a b
 end
)";

struct Options {
    bool limits = false;
    bool override = false;
    bool radians = false;
};

Seen Parse(const std::string& frames, bool rows, Options options, int cancelAt = 0) {
    CStringFile file;
    MocapSkeleton skeleton;
    FileAllowances allowances;
    Recorder recorder(0);
    AcclaimParser parser(file, skeleton, allowances, recorder);
    parser.ReadRows(rows);
    parser.ApplyLimits(options.limits);
    if (options.override) parser.OverrideLengthMultiplier(true, 3.0);
    std::string asf = kSkeleton;
    if (options.radians) asf.replace(asf.find("angle deg"), 9, "angle rad");
    EXPECT_TRUE(file.ReadMemory(asf));
    allowances.Reset(asf.size());
    parser.ForgetSkeleton();
    EXPECT_GE(parser.ParseVersion(), 0);
    EXPECT_GE(parser.ParseASF(), 0);
    parser.ForgetFile();
    EXPECT_TRUE(file.ReadMemory(frames));
    recorder.Restart(cancelAt);
    Seen seen;
    seen.status = parser.ParseAMC();
    seen.message = parser.LastError().message;
    seen.line = parser.LastError().line;
    seen.column = parser.LastError().column;
    seen.position = file.GetPosition();
    seen.frames = skeleton.frameCount;
    seen.lastFrame = parser.Facts().lastFrame;
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

void ExpectSame(const std::string& text, Options options = {}, int cancelAt = 0) {
    const Seen one = Parse(text, false, options, cancelAt);
    for (const int count : {1, 2, 5}) {
        const Threads threads(count);
        EXPECT_EQ(Parse(text, true, options, cancelAt), one) << count << " threads";
    }
}

std::string Frame(int number) {
    std::string text = std::to_string(number) + '\n';
    double value = 0.37 * number - 4.0;
    const auto bone = [&](const char* name, int values) {
        text += name;
        for (; values > 0; --values) {
            text += ' ' + std::to_string(value);
            value += 1.25;
        }
        text += '\n';
    };
    bone("root", 6);
    bone("a", 3);
    bone("b", 2);
    return text;
}

constexpr int kFrames = 30;

// Thirty frames; the text of frame 17 is replaced by `with`.
std::string Motion(const std::string& with = Frame(17)) {
    std::string text;
    for (int number = 1; number <= kFrames; ++number)
        text += number == 17 ? with : Frame(number);
    return text;
}

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
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
    {"CarriageReturns", Replaced(Motion(), "\n", "\r\n")},
    {"OldMacintosh", Replaced(Motion(), "\n", "\r")},
    {"BlanksAtTheEnds", Replaced(Motion(), "\n", " \t \n")},
    {"BlanksAtTheStarts", Replaced(Motion(), "\n", "\n \t")},
    {"BlankLines", Replaced(Motion(), "\n", "\n\n")},
    {"BlankLinesAtTheEnd", Motion() + "\n \n\n\n\n\n"},
    {"NoLineFeedAtTheEnd", Motion().substr(0, Motion().size() - 1)},
    {"OneLine", Replaced(Motion(), "\n", " ")},
    {"OneFrame", Frame(1)},
    {"TwoFrames", Frame(5) + Frame(2)},
    {"NoFrames", "# nothing\n"},
    {"Comment", Motion("# here\n" + Frame(17))},
    {"CommentInAFrame", Motion(Replaced(Frame(17), "a ", "# x\na "))},
    {"CommentAfterAName", Motion(Replaced(Frame(17), "a ", "a # x\n"))},
    {"CommentInTheLastLine", Motion() + "# end"},
    {"Keyword", Motion(":KEY\n" + Frame(17))},
    {"KeywordBeforeTheFirstFrame", ":KEY\n" + Motion()},
    {"OtherNames", Motion(Replaced(Frame(17), "a ", "zz "))},
    {"OtherOrder", Motion("17\na 1 2 3\nroot 1 2 3 4 5 6\nb 1 2\n")},
    {"UnknownBoneInTheFirstFrame", Replaced(Frame(1), "b ", "zz ") + Motion()},
    {"UnknownBoneWithoutValues", "1\nroot 1 2 3 4 5 6\na 1 2 3\nzz\n" + Motion()},
    {"MissingBone", Motion("17\nroot 1 2 3 4 5 6\na 1 2 3\n")},
    {"MoreBones", Motion(Frame(17) + "c 1 2\n")},
    {"TooFewValues", Motion("17\nroot 1 2 3 4 5\na 1 2 3\nb 1 2\n")},
    {"TooManyValues", Motion("17\nroot 1 2 3 4 5 6 7\na 1 2 3\nb 1 2\n")},
    {"ValuesOnTwoLines", Motion("17\nroot 1 2 3\n4 5 6\na 1 2 3\nb 1 2\n")},
    {"NamesOnALine", Motion("17\nroot 1 2 3 4 5 6 a 1 2 3 b 1 2\n")},
    {"NumberAndNameOnALine", Motion("17 root 1 2 3 4 5 6\na 1 2 3\nb 1 2\n")},
    {"Commas", Motion("17\nroot 1,2,3,4,5,6\na 1 2 3\nb 1 2\n")},
    {"Parentheses", Motion("17\nroot (1 2 3) 4 5 6\na 1 2 3\nb 1 2\n")},
    {"CommaAfterAName", Motion("17\nroot 1 2 3 4 5 6\na,1 2 3\nb 1 2\n")},
    {"CommaAfterTheNumber", Motion("17,\nroot 1 2 3 4 5 6\na 1 2 3\nb 1 2\n")},
    {"Word", Motion("17\nroot 1 2 3 4 x 6\na 1 2 3\nb 1 2\n")},
    {"Numbers", Motion("17\nroot 1e-5 -0 0.0 nan 0x1p4 +6\na .5 -.5 1e400\nb 5. 1abc\n")},
    {"ZeroThatIsRefused", Motion("17\nroot 1 2 3 4 .0 6\na 1 2 3\nb 1 2\n")},
    {"NegativeNumber", Motion(Replaced(Frame(17), "17\n", "-17\n"))},
    {"NumberZero", Motion(Replaced(Frame(17), "17\n", "0\n"))},
    {"NumberWithTail", Motion(Replaced(Frame(17), "17\n", "17.5\n"))},
    {"HugeNumber", Motion(Replaced(Frame(17), "17\n", "99999999999999999999\n"))},
    {"NineDigits", Motion(Replaced(Frame(17), "17\n", "999999999\n"))},
    {"TenDigits", Motion(Replaced(Frame(17), "17\n", "9999999999\n"))},
    {"Nul", Motion(std::string("17\nroot 1 2\0 3 4 5 6\n", 20))},
};

class AmcRowsTest : public testing::TestWithParam<Row> {};

TEST_P(AmcRowsTest, AreReadLikeSingleValues) {
    ExpectSame(GetParam().text);
    ExpectSame(GetParam().text, {.limits = true});
    ExpectSame(GetParam().text, {.limits = true, .override = true, .radians = true});
}

TEST_P(AmcRowsTest, CanBeCancelledAtEachPoll) {
    const Seen whole = Parse(GetParam().text, false, {});
    const auto polls = std::count(whole.calls.begin(), whole.calls.end(), L'p');
    for (int poll = 1; poll <= polls; poll += 3)
        ExpectSame(GetParam().text, {}, poll);
}

INSTANTIATE_TEST_SUITE_P(, AmcRowsTest, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(AmcRowsCut, AreReadLikeSingleValuesAtEachByte) {
    const std::string text = Motion();
    for (std::size_t size = 1; size < text.size(); size += size < 1500 ? 1 : 7)
        ExpectSame(text.substr(0, size));
}

TEST(AmcRowsChanged, AreReadLikeSingleValues) {
    std::mt19937_64 random(9);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random() % n); };
    static constexpr char kBytes[] = "\n\n  \t\r\f--..00e5+xa#:(,)";
    const std::string text = Motion();
    for (int i = 0; i < 400; ++i) {
        std::string changed = text;
        for (std::size_t changes = 1 + below(3); changes > 0; --changes)
            changed[below(text.size())] = kBytes[below(sizeof(kBytes))];
        ExpectSame(changed, {.limits = below(2) == 0}, static_cast<int>(below(4) * 100));
    }
}

// Files that have room for fewer frames than they have, because some of them need few lines.
TEST(AmcRowsShort, AreReadLikeSingleValues) {
    std::string text = Frame(1) + Frame(2);
    for (int number = 3; number < 200; ++number)
        text += Replaced(Frame(number), "\n", " ");
    ExpectSame(text);
}

}  // namespace
}  // namespace amc_rows_test
