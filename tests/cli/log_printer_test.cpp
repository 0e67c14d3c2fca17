#include "cli/log_printer.h"

#include <gmock/gmock.h>

namespace {

using headless::LogLine;

std::string Printed(const std::string& file, const std::string& motion, cli::LogStyle style,
                    const std::vector<LogLine>& lines) {
    std::string text;
    cli::LogPrinter printer(file, motion, style, [&](std::string_view more) { text += more; });
    for (const LogLine& line : lines)
        printer.Print(line);
    return text;
}

TEST(LogPrinter, PutsTheFileBeforeEachLine) {
    EXPECT_EQ(Printed("a/walk.bvh", "", {}, {{std::nullopt, L"one"}, {8, L"two"}}),
              "a/walk.bvh: one\na/walk.bvh: two\n");
}

TEST(LogPrinter, PrintsLinesWithoutANameWithoutAFile) {
    EXPECT_EQ(Printed("", "", {}, {{8, L"one"}}), "one\n");
}

TEST(LogPrinter, NamesTheMotionAfterTheSkeletonsDocumentation) {
    EXPECT_EQ(Printed("s.asf", "m.amc", {},
                      {{std::nullopt, L"Importing"}, {4, L"odd"}, {8, L"text"}, {4, L"bone"}}),
              "s.asf: Importing\ns.asf: odd\ns.asf: text\nm.amc: bone\n");
}

TEST(LogPrinter, PrintsControlCharactersOutsideATerminal) {
    EXPECT_EQ(Printed("a.bvh", "", {}, {{8, L"a\x1B[2J\nb"}}), "a.bvh: a\x1B[2J\nb\n");
}

TEST(LogPrinter, EscapesControlsOnATerminal) {
    EXPECT_EQ(Printed("a\r.bvh", "", {.escapeControls = true}, {{8, L"a\x1B[2J\nb"}}),
              "a\\r.bvh: a\\x1b[2J\na\\r.bvh: b\n");
}

TEST(LogPrinter, CanPrintOnlyErrorsAndWarnings) {
    EXPECT_EQ(Printed("a.bvh", "", {.errorsOnly = true},
                      {{std::nullopt, L"Importing"},
                       {4, L"warning"},
                       {8, L"ERROR: it failed"},
                       {2, L"File name not specified"},
                       {8, L"Imported 1 model successfully"}}),
              "a.bvh: warning\na.bvh: ERROR: it failed\na.bvh: File name not specified\n");
}

}  // namespace
