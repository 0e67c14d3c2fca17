#include "cli/shown_arguments.h"

#include <array>
#include <gmock/gmock.h>

namespace {

// A copy of what main gets for "zkhost convert takes" and, after it, the environment "A=1".
struct Arguments {
    std::array<char, 26> memory{"zkhost\0convert\0takes\0A=1\0"};
    std::array<char*, 3> values{memory.data(), memory.data() + 7, memory.data() + 15};

    std::string_view Text() const { return {memory.data(), memory.size() - 1}; }
};

struct Shown {
    const char* name;
    std::vector<std::string> arguments;
    std::string_view text;
};

void PrintTo(const Shown& shown, std::ostream* out) {
    *out << shown.name;
}

class ShownArguments : public testing::TestWithParam<Shown> {
  protected:
    ~ShownArguments() override { cli::RememberArguments(0, nullptr); }
};

TEST_P(ShownArguments, KeepTheEnvironment) {
    Arguments arguments;
    cli::RememberArguments(3, arguments.values.data());
    cli::ShowArguments(GetParam().arguments);
    EXPECT_EQ(arguments.Text(), GetParam().text);
}

using namespace std::string_view_literals;
const Shown kShown[] = {
    {"None", {}, "zkhost\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0A=1\0"sv},
    {"Short", {"import", "a"}, "zkhost\0import\0a\0\0\0\0\0\0A=1\0"sv},
    {"ThatJustFit", {"import", "abcdef"}, "zkhost\0import\0abcdef\0A=1\0"sv},
    {"Long", {"import", "abcdefgh"}, "zkhost\0import\0abcdef\0A=1\0"sv},
};
INSTANTIATE_TEST_SUITE_P(, ShownArguments, testing::ValuesIn(kShown),
                         [](const auto& row) { return row.param.name; });

TEST(ShownArgumentsAlone, DoNothingWithoutMain) {
    cli::RememberArguments(0, nullptr);
    cli::ShowArguments({"import"});
}

}  // namespace
