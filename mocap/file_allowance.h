#pragma once

#include <cstdint>
#include <initializer_list>

// Limits how much the import of one file may create: objects, or characters of derived names and
// warnings. A few bytes of a file can create an object of a thousand bytes, or a copy of a long
// name. The limit therefore grows with the size of the file.
class FileAllowance {
  public:
    // The limit of a file is `always`, plus `each` for every `bytes` bytes of the file.
    constexpr FileAllowance(std::uint64_t always, std::uint64_t each, std::uint64_t bytes)
        : always_(always), each_(each), bytes_(bytes), limit_(always), left_(always) {}

    // Computes the limit for a file of `fileSize` bytes, and makes all of it available.
    void Reset(std::uint64_t fileSize) { left_ = limit_ = always_ + fileSize / bytes_ * each_; }
    // Returns false, and reserves nothing, when less than `amount` is left.
    bool Reserve(std::uint64_t amount = 1) {
        if (amount > left_) return false;
        left_ -= amount;
        return true;
    }
    // The total that the file may reserve.
    std::uint64_t Limit() const { return limit_; }

  private:
    std::uint64_t always_;
    std::uint64_t each_;
    std::uint64_t bytes_;
    std::uint64_t limit_;
    std::uint64_t left_;
};

// The allowances of one file. The parser and the code that builds the scene share them. A file
// whose sections have channels and frames is not expected to reach these limits.
struct FileAllowances {
    FileAllowance derivedNames{std::uint64_t{4} << 20, 4, 1};  // characters
    // In an ASF file, the six bytes of an empty ":root" section create a node. Nodes with content
    // need more bytes.
    FileAllowance nodes{1024, 1, 16};
    // Limits how many chains, and nulls at the ends of chains, are created. Each chain has at least
    // three objects. Even if every joint branches, a chain with channels needs more than 40 bytes
    // of the file.
    FileAllowance chains{40000, 1, 40};

    // Resets every allowance for a file of `fileSize` bytes.
    void Reset(std::uint64_t fileSize) {
        for (FileAllowance* const allowance : {&derivedNames, &nodes, &chains})
            allowance->Reset(fileSize);
    }
};
