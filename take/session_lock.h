#pragma once

#include <mutex>

namespace take {

// While one of these exists, no other thread can import; a second one waits for it. The reason: a
// process has one session of the host, and the plug-in has one record of its arguments.
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
