// Joins texts that several threads make.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>

namespace survey {

// Appends parts to a text in the order of their indexes, counted from 0. Every part must be
// appended once, and threads must begin parts in this order; a thread that appends a part waits for
// the parts before it.
class OrderedText {
  public:
    // `text` must outlive this object. Nobody else may use it until all parts are appended.
    explicit OrderedText(std::string& text) : text_(text) {}

    // If memory runs out, the text is incomplete, and Finish says so.
    void Append(std::size_t part, std::string_view text) noexcept {
        InTurn(part, [&] { text_ += text; });
    }
    // To be called instead of Append if the part could not be made. Remembers the current
    // exception.
    void Fail(std::size_t part) noexcept {
        const std::exception_ptr failure = std::current_exception();
        InTurn(part, [&] { std::rethrow_exception(failure); });
    }
    // Must be called after all parts. Passes on the exception of the first part that failed.
    void Finish() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    template <class Action>
    void InTurn(std::size_t part, const Action& action) noexcept {
        std::unique_lock lock(mutex_);
        turn_.wait(lock, [&] { return next_ == part; });
        try {
            if (!failure_) action();
        } catch (...) {
            failure_ = std::current_exception();
        }
        ++next_;
        turn_.notify_all();
    }

    std::string& text_;
    std::mutex mutex_;  // for the members below and the text
    std::condition_variable turn_;
    std::size_t next_ = 0;
    std::exception_ptr failure_;
};

}  // namespace survey
