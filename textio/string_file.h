// A whole text file in memory, handed out as tokens between separator characters. Bytes, not
// characters: nothing is converted. A NUL byte ends the text. Lines and columns count from 0.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "memory/large_memory.h"

class CStringFile {
  public:
    // Without a file; separators tab, carriage return, line feed and space.
    CStringFile();
    ~CStringFile();
    CStringFile(const CStringFile&) = delete;
    CStringFile& operator=(const CStringFile&) = delete;

    // Replaces the separators; they outlive the file. False, with the old set kept, for an empty
    // set or without memory.
    bool RegisterWhiteSpaces(const char* set);

    // Loads the file, which must be a seekable one of 1 byte to less than 4 GiB; false leaves the
    // reader empty. The path's characters become UTF-8, those from U+DC80 to U+DCFF the single
    // bytes 0x80 to 0xFF, so that any file name has a path.
    bool ReadFile(const wchar_t* path);
    void ClearFile();

    // The next token, or null at the end. Owned by the reader until its next token call.
    const char* GetNextString();
    // The same without moving on, except past separators at the end of the file.
    const char* PeekNextString();

    // The next token as a number, read as atoi and atof do. False, with `value` untouched and the
    // position where it was (except past separators at the end of the file), unless the result is
    // not zero or the token begins with "0" or "-0".
    bool GetNextInt(int& value);
    bool GetNextFloat(double& value);

    // To the first character after the next line feed. False, without moving, where there is none.
    bool GotoNextLine();

    // Of the position. Cost: the distance from where it was last asked.
    std::uint32_t GetCurrentLine() const;
    std::uint32_t GetCurrentColumn() const;

    // False, without moving, for a position that is not inside the file.
    bool SetPosition(unsigned int newPosition);
    std::uint32_t GetPosition() const { return position; }
    std::uint32_t GetSize() const { return size; }
    // The file's bytes and a NUL behind them; null without a file.
    char* GetBuffer() { return static_cast<char*>(buffer.get()); }

  private:
    struct Token {
        const char* first;
        const char* last;
    };
    bool IsSeparator(char c) const { return isSeparator[static_cast<unsigned char>(c)]; }
    bool SkipSeparators();
    Token TakeToken();
    const char* Copy(Token taken);
    void PutPosition(const char* at);

    const char* Text() const { return static_cast<const char*>(buffer.get()); }

    memory::LargeMemory buffer;
    std::unique_ptr<char[]> separators;
    std::unique_ptr<char[]> token;
    std::uint32_t size = 0;
    std::uint32_t position = 0;

    std::array<bool, 256> isSeparator{};
    // The line of a position that was asked for, and the start of the line of another.
    struct LineMark {
        std::uint32_t position = 0;
        std::uint32_t line = 0;
    };
    struct LineStart {
        std::uint32_t position = 0;
        std::uint32_t start = 0;
    };
    mutable LineMark lineMark;
    mutable LineStart lineStart;
};
