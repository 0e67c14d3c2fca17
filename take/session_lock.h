#pragma once

#include <mutex>

namespace take {

// For as long as one lives, no other thread imports: the host has one session in a process, and the
// plug-in one record of its arguments.
class SessionLock {
  public:
    SessionLock() : lock_(Mutex()) {}

  private:
    static std::mutex& Mutex() {
        static std::mutex mutex;
        return mutex;
    }

    std::lock_guard<std::mutex> lock_;
};

}  // namespace take
