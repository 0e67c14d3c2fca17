#pragma once

#include <cstdint>
#include <string>

#include "mocap/file_allowance.h"
#include "mocap/mocap_skeleton.h"
#include "mocap/parse_monitor.h"
#include "textio/string_file.h"

// Returns the message for a file that needs more of `what` than `allowance` permits.
std::wstring ExceededAllowance(const wchar_t* what, const FileAllowance& allowance);

// The base class of the BVH and the Acclaim parser. A parser turns the tokens of a reader into the
// nodes and keys of a skeleton. It creates no scene object and works without a host. Its operations
// return the host's status codes, which are negative on failure. They throw only std::bad_alloc.
class MocapParser {
  public:
    MocapParser(const MocapParser&) = delete;
    MocapParser& operator=(const MocapParser&) = delete;

    struct Error {
        const wchar_t* message = L"";  // empty if there is no error; valid until the next error
        // The reader's line and column when the error was recorded, counted from 0.
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };
    const Error& LastError() const { return error; }

    // If `reads` is false, the parser reads all values of a motion one by one. This takes longer,
    // and gives the same result. It is meant for tests, which compare the results. It is true at
    // first.
    void ReadRows(bool reads) { readsRows = reads; }

    // The message when memory runs out. In this case LastError().message is this same pointer, so
    // that a caller can compare pointers instead of texts.
    static const wchar_t* const kOutOfMemoryMessage;

  protected:
    using CHANNELS = MOCAPMODEL::CHANNELS;

    // Stores references to the four arguments, so they must outlive the parser.
    MocapParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                FileAllowances& fileAllowances, ParseMonitor& parseMonitor)
        : stringFile(fileReader),
          skeleton(parsedSkeleton),
          allowances(fileAllowances),
          monitor(parseMonitor) {}
    ~MocapParser() = default;

    // Call this before the parser parses another file.
    void ForgetError() noexcept { error = {}; }
    // Records the error with the reader's position and returns `status`. `message` must outlive the
    // parser.
    std::int32_t Fail(std::int32_t status, const wchar_t* message) noexcept;
    std::int32_t FailForMemory() noexcept;
    std::int32_t FailForCount(const wchar_t* what, const FileAllowance& allowance);
    std::int32_t FailForDerivedNames();
    // Records the error "User cancelled command".
    std::int32_t FailForCancel() noexcept;
    // Returns whether the user cancelled. If so, records the error.
    bool CheckCancelled();
    // Appends an empty node to the skeleton. If memory runs out, or if the file has more nodes than
    // its size allows, records the error and returns null.
    MOCAPMODEL* AppendNode();

    CStringFile& stringFile;
    MocapSkeleton& skeleton;
    FileAllowances& allowances;
    ParseMonitor& monitor;
    bool readsRows = true;

  private:
    Error error;
    std::wstring exceeded;  // holds the message of FailForCount
};
