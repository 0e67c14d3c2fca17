#pragma once

#include <cstddef>

// How much of something may be made of a file: objects, or characters of names that derive from
// others and of warnings. A few bytes can ask for an object that is worth thousands, or have
// something long copied; what a file gets is in proportion to its size.
class FileAllowance {
  public:
    // `always`: what every file gets, however small; `each` more for every `bytes` of it.
    constexpr FileAllowance(std::size_t always, std::size_t each, std::size_t bytes)
        : always_(always), each_(each), bytes_(bytes), limit_(always), left_(always) {}

    // A new file of so many bytes.
    void Reset(std::size_t fileSize) { left_ = limit_ = always_ + fileSize / bytes_ * each_; }
    // False, with nothing taken, where less is left.
    bool Take(std::size_t amount = 1) {
        if (amount > left_) return false;
        left_ -= amount;
        return true;
    }
    // All that the file may take.
    std::size_t Limit() const { return limit_; }

  private:
    std::size_t always_;
    std::size_t each_;
    std::size_t bytes_;
    std::size_t limit_;
    std::size_t left_;
};
