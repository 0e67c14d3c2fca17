#pragma once

#include <cstdint>
#include <string>

#include "mocap/file_allowance.h"
#include "mocap/mocap_skeleton.h"
#include "mocap/parse_monitor.h"
#include "textio/string_file.h"

// The message for a file that asks for more of `what` than its size allows.
std::wstring ExceededAllowance(const wchar_t* what, const FileAllowance& allowance);

// What the parsers share. A parser turns the tokens of a reader into the nodes and keys of a
// skeleton; it makes no scene object and needs no session of a host. Its operations return the
// host's status codes, negative on failure, and throw only std::bad_alloc.
class MocapParser {
  public:
    struct Error {
        const wchar_t* message = L"";  // empty if there is no error; valid until the next one
        // The reader's position when the error was recorded, counted from 0.
        std::uint32_t line = 0;
        std::uint32_t column = 0;
    };
    const Error& LastError() const { return error; }

    // The message when memory runs out. A caller recognises it by comparing pointers:
    // LastError().message is then equal to this one.
    static const wchar_t* const kOutOfMemoryMessage;

  protected:
    using CHANNELS = MOCAPMODEL::CHANNELS;

    // Keeps references to all four.
    MocapParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
                FileAllowances& fileAllowances, ParseMonitor& parseMonitor)
        : stringFile(fileReader),
          skeleton(parsedSkeleton),
          allowances(fileAllowances),
          monitor(parseMonitor) {}
    ~MocapParser() = default;
    MocapParser(const MocapParser&) = delete;
    MocapParser& operator=(const MocapParser&) = delete;

    // Call this before the parser parses another file.
    void ForgetError() noexcept { error = {}; }
    // Records the error with the reader's position and returns `status`. `message` must outlive the
    // parser.
    std::int32_t Fail(std::int32_t status, const wchar_t* message) noexcept;
    std::int32_t FailForMemory() noexcept;
    std::int32_t FailForCount(const wchar_t* what, const FileAllowance& allowance);
    std::int32_t FailForDerivedNames();
    // Returns whether the user wants to stop. If so, records that as the error.
    bool CheckCancelled();
    // Appends an empty node. Returns null, with the error recorded, when memory runs out or the
    // file has more nodes than its size allows.
    MOCAPMODEL* AppendNode();

    CStringFile& stringFile;
    MocapSkeleton& skeleton;
    FileAllowances& allowances;
    ParseMonitor& monitor;

  private:
    Error error;
    std::wstring exceeded;  // holds the message of FailForCount
};
