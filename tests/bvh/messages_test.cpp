// Compares the messages in the sources with those in the tables of the tests, so that a new message
// needs a row.
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "tests/bvh/bad_files.h"
#include "tests/bvh/host_failures.h"
#include "tests/bvh/import_failures.h"
#include "tests/mocap/step_messages.h"
#include "tests/support/files.h"

namespace {

// Only a lack of memory gives this message, which no file and no failure of the host can bring
// about.
constexpr const char* kOutOfMemory = "Out of memory";

// The pieces of the messages for files that ask for too much of something. Such files are large and
// are in other tests.
constexpr const char* kPiecesOfRefusals[] = {
    "The file asks for more ",
    " than its size allows (limit ",
    "characters of derived names",
    "bone chains and nulls at their ends",
    "sections without channels or frames",
};

using Messages = std::set<std::string>;

// Returns the first wide string literal at or after `from`, joined with the literals that directly
// follow it, and moves `from` past them. Empty if there is none.
std::string NextWideText(const std::string& source, std::size_t& from) {
    std::string text;
    std::size_t open = source.find("L\"", from);
    while (open != std::string::npos) {
        const std::size_t close = source.find('"', open + 2);
        text += source.substr(open + 2, close - open - 2);
        from = close + 1;
        const std::size_t next = source.find_first_not_of(" \n", from);
        open = next != std::string::npos && source.compare(next, 2, "L\"") == 0 ? next
                                                                                : std::string::npos;
    }
    return text;
}

// The wide texts of several words. Those that end in dots are captions, not messages.
Messages MessagesOf(const std::string& source) {
    Messages messages;
    std::size_t from = 0;
    while (source.find("L\"", from) != std::string::npos) {
        const std::string text = NextWideText(source, from);
        if (text.find(' ') != std::string::npos && !text.ends_with("...")) messages.insert(text);
    }
    return messages;
}

Messages MessagesOfRooms() {
    Messages all;
    for (const char* room : {"bvh", "mocap"}) {
        const auto folder = std::filesystem::path(ZKMOCAP_SOURCE_DIR) / room;
        for (const auto& file : support::FilesIn(folder, ".cpp"))
            all.merge(MessagesOf(support::ReadText(file)));
    }
    return all;
}

Messages ReachedMessages() {
    Messages reached = {bvh_test::kNoFileMessage, bvh_test::kNoNameMessage, kOutOfMemory};
    for (const auto& row : bvh_test::kBadFiles)
        reached.insert(row.message);
    for (const auto& row : bvh_test::kFailedImports)
        reached.insert(row.message);
    for (const auto& row : bvh_test::kHostFailures)
        reached.insert(row.message);
    for (const char* message : mocap_test::kStepMessages)
        reached.insert(message);
    for (const char* piece : kPiecesOfRefusals)
        reached.insert(piece);
    reached.erase("");
    return reached;
}

TEST(BvhMessages, AreAllReachedByARow) {
    const Messages reached = ReachedMessages();
    const Messages messages = MessagesOfRooms();
    EXPECT_GT(messages.size(), 30u) << "the sources were not found";
    for (const std::string& message : messages)
        EXPECT_EQ(reached.count(message), 1u) << "no row reaches '" << message << "'";
}

TEST(BvhMessages, OfEveryRowAreInTheSources) {
    const Messages messages = MessagesOfRooms();
    for (const std::string& message : ReachedMessages())
        EXPECT_EQ(messages.count(message), 1u) << "no source says '" << message << "'";
}

}  // namespace
