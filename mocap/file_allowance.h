#pragma once

#include <cstdint>
#include <initializer_list>

// How much may be made of one file: a number of objects, or of characters in derived names and
// warnings. A few bytes of a file can ask for an object of a thousand bytes, or for a copy of a
// long name, so the limit grows with the size of the file.
class FileAllowance {
  public:
    // A file may reserve `always`, and in addition `each` for every `bytes` bytes of its size.
    constexpr FileAllowance(std::uint64_t always, std::uint64_t each, std::uint64_t bytes)
        : always_(always), each_(each), bytes_(bytes), limit_(always), left_(always) {}

    // Starts anew for a file of `fileSize` bytes.
    void Reset(std::uint64_t fileSize) { left_ = limit_ = always_ + fileSize / bytes_ * each_; }
    // Returns false, and reserves nothing, when less than `amount` is left.
    bool Reserve(std::uint64_t amount = 1) {
        if (amount > left_) return false;
        left_ -= amount;
        return true;
    }
    // What the whole file may reserve.
    std::uint64_t Limit() const { return limit_; }

  private:
    std::uint64_t always_;
    std::uint64_t each_;
    std::uint64_t bytes_;
    std::uint64_t limit_;
    std::uint64_t left_;
};

// The allowances that parsers and scene builders share. A file whose sections have channels and
// frames never reaches these limits.
struct FileAllowances {
    FileAllowance derivedNames{std::uint64_t{4} << 20, 4, 1};  // characters
    // A section without content needs six bytes for a node; nodes with content need more.
    FileAllowance nodes{1024, 1, 16};
    // Chains, of three objects each, and the nulls at their ends. Even where every joint branches,
    // a chain with channels takes more than 40 bytes of the file.
    FileAllowance chains{40000, 1, 40};

    // Starts anew for a file of `fileSize` bytes.
    void Reset(std::uint64_t fileSize) {
        for (FileAllowance* const allowance : {&derivedNames, &nodes, &chains})
            allowance->Reset(fileSize);
    }
};
