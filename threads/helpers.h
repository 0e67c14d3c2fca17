#pragma once

#include <cstddef>
#include <pthread.h>

namespace threads {

// Threads that run one function at the same time as the thread that started them. They end before
// their object does. Starting them allocates nothing with `new` and throws nothing. If not all of
// them can be started, there are fewer, or none. So the caller must do all the work that the
// helpers leave.
class Helpers {
  public:
    using Work = void (*)(void* context) noexcept;

    // No object has more helpers than this.
    static constexpr std::size_t kMost = 31;

    // Starts `count` helpers, but at most kMost. Each of them calls work(context) once. They do not
    // receive the signals of the process, except those that an error of their own raises.
    Helpers(std::size_t count, Work work, void* context) noexcept;
    ~Helpers() { Join(); }
    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;

    // Waits until all helpers have ended.
    void Join() noexcept;

  private:
    static void* Run(void* helpers) noexcept;

    Work work_;
    void* context_;
    pthread_t threads_[kMost];
    std::size_t started_ = 0;
};

}  // namespace threads
