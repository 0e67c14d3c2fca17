#pragma once

#include <cstdint>

// How much of something may be made of a file: objects, or characters of names that derive from
// others and of warnings. A few bytes can ask for an object that is worth thousands, or have
// something long copied; what a file gets is in proportion to its size.
class FileAllowance {
  public:
    // `always`: what every file gets, however small; `each` more for every `bytes` of it.
    constexpr FileAllowance(std::uint64_t always, std::uint64_t each, std::uint64_t bytes)
        : always_(always), each_(each), bytes_(bytes), limit_(always), left_(always) {}

    // A new file of so many bytes.
    void Reset(std::uint64_t fileSize) { left_ = limit_ = always_ + fileSize / bytes_ * each_; }
    // False, with nothing taken, where less is left.
    bool Take(std::uint64_t amount = 1) {
        if (amount > left_) return false;
        left_ -= amount;
        return true;
    }
    // All that the file may take.
    std::uint64_t Limit() const { return limit_; }

  private:
    std::uint64_t always_;
    std::uint64_t each_;
    std::uint64_t bytes_;
    std::uint64_t limit_;
    std::uint64_t left_;
};
