// Compares the messages in the sources with those in the tables of the tests, so that a new message
// needs a row.
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

#include "tests/acclaim/bad_files.h"
#include "tests/acclaim/import_failures.h"
#include "tests/support/files.h"

namespace {

using namespace support;

// Messages that no row of the tables reaches, with the reason.
const std::set<std::string> kReachedElsewhere = {
    "Out of memory",                       // needs a lack of memory; in other tests
    "Failed to convert length animation",  // needs a special skeleton; in other tests
    // No file gives this message. It needs a count of animated nodes below zero, but a frame has no
    // more names than animated nodes are left.
    "Unrecoverable errors while parsing motion file",
};
// The wide texts of the sources that are not messages.
const std::set<std::string> kOtherTexts = {
    "Importing Acclaim Skeleton...",
    "Importing Acclaim Motion...",
    "Creating Zelk model...",
    "Converting rotations...",
    "Converting length animation...",
    "_BasePose",
    "Creating model motion action...",
    "Almost done...",
    R"(\t\r\n (),)",
    "Invalid keyword found (",
    "Unknown bone (",
    ") at line ",
    ", ignoring...",
    ") referenced in AMC file at line ",
    "More unknown bones or invalid keywords found in AMC file (",
    "), ignoring...",
};

// Returns the contents of the wide string literals.
std::vector<std::string> WideTexts(const std::string& source) {
    std::vector<std::string> texts;
    for (std::size_t at = source.find("L\""); at != std::string::npos;
         at = source.find("L\"", at)) {
        const std::size_t end = source.find('"', at + 2);
        texts.push_back(source.substr(at + 2, end - at - 2));
        at = end + 1;
    }
    return texts;
}

TEST(AcclaimMessages, AreAllReached) {
    std::set<std::string> reached = kReachedElsewhere;
    for (const BadFile& row : BadSkeletons())
        reached.insert(row.message);
    for (const BadFile& row : BadMotions())
        reached.insert(row.message);
    for (const RefusedFile& row : kRefusedSkeletons)
        reached.insert(row.message);
    for (const char* message :
         {"ASF file not specified. Specify a valid file name",
          "Container model name not specified. Specify a valid model name",
          "Skeleton not defined yet", "AMC file not specified. Specify a valid file name",
          "Motion name not specified. Specify a valid motion name",
          "Failed to read AMC file. Specify a valid file name", "Failed to create main model"})
        reached.insert(message);

    std::size_t found = 0;
    for (const char* source : {"acclaim_import", "amc_import", "amc_parser", "asf_bonedata",
                               "asf_fixups", "asf_hierarchy", "asf_import", "asf_parser",
                               "asf_values", "amc_key_lists", "node_names", "wide_text"}) {
        const std::string text = ReadText(std::string(ZKMOCAP_ACCLAIM_DIR) + "/" + source + ".cpp");
        for (const std::string& message : WideTexts(text)) {
            if (kOtherTexts.count(message) > 0) continue;
            ++found;
            EXPECT_TRUE(reached.count(message) > 0) << "no row gives \"" << message << '"';
        }
    }
    EXPECT_GT(found, 50u);
}

}  // namespace
