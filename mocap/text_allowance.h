#pragma once

#include <cstddef>

// How much text may be made of a file: names that derive from others, and warnings. A file can name
// something long once and have it copied for every few bytes; what it gets is in proportion to its
// size.
class TextAllowance {
  public:
    // `always`: characters that every file gets, however small.
    explicit TextAllowance(std::size_t always) : always_(always), left_(always) {}

    // A new file of so many bytes.
    void Reset(std::size_t fileSize) { left_ = always_ + kPerByte * fileSize; }
    // False, with nothing taken, where fewer are left.
    bool Take(std::size_t characters) {
        if (characters > left_) return false;
        left_ -= characters;
        return true;
    }

  private:
    static constexpr std::size_t kPerByte = 2;

    std::size_t always_;
    std::size_t left_;
};
