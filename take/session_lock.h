#pragma once

#include <mutex>

namespace take {

// A thread must own a SessionLock while it calls the plug-in. If another thread creates a lock
// meanwhile, it waits until the first lock is destroyed. This is needed because a process has only
// one session of the host, and the plug-in has only one record of the arguments of the current
// command.
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
