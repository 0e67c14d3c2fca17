#include "text/shell_words.h"

#include <array>
#include <cstdio>
#include <gmock/gmock.h>
#include <memory>

namespace {

using testing::HasSubstr;
using testing::Not;
using text::ShellLine;
using text::ShellWord;

// What the shell command prints.
std::string OutputOf(const std::string& command) {
    std::string output;
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::array<char, 4096> bytes;
    while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe.get()))
        output.append(bytes.data(), count);
    return output;
}

std::string EveryByte() {
    std::string all;
    for (int byte = 1; byte < 256; ++byte)
        all += static_cast<char>(byte);
    return all;
}

const std::string kWords[] = {
    "",
    "plain",
    "two words",
    "it's",
    "\"",
    "$HOME `ls` $(ls) *",
    "\xC2\x9B"
    "31m",
    "\xE2\x80\xAEz",
    "\xC3\xA9\n",
    "a\\b",
    "-n",
    "~",
    "#",
    "{} {#} {.}",
    "歩く.bvh",
    "\xE9",
    "line\nfeed",
    "carriage\rreturn\ttab",
    "it's\na \\0101 \"quoted\" $x",
    "\x1b[31mred",
    "\n",
    EveryByte() + "end",
};

TEST(ShellWord, IsReadBackByAShell) {
    for (const std::string& word : kWords) {
        if (word.ends_with('\n')) continue;  // line feeds at the end are lost, as the header says
        EXPECT_EQ(OutputOf("printf '%s|' " + ShellWord(word)), word + '|') << ShellWord(word);
    }
}

TEST(ShellWord, StaysOnOneLine) {
    for (const std::string& word : kWords) {
        EXPECT_THAT(ShellWord(word), Not(HasSubstr("\n")));
        EXPECT_THAT(ShellWord(word), Not(HasSubstr("\r")));
    }
}

TEST(ShellWord, IsNotQuotedWithoutNeed) {
    EXPECT_EQ(ShellWord("takes/07/07_01.amc"), "takes/07/07_01.amc");
    EXPECT_EQ(ShellWord("--length=-0.5"), "--length=-0.5");
}

TEST(ShellLine, SeparatesWords) {
    EXPECT_EQ(OutputOf("printf '[%s]' " + ShellLine({"a", "", "b c", "'"})), "[a][][b c][']");
}

}  // namespace
