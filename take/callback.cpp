#include "take/callback.h"

namespace take {
namespace {

// The session's listeners, forgotten at the end.
class Listening {
  public:
    Listening(headless::Session& session, const Listener& listener) : session_(session) {
        session_.OnLog(listener.onLog);
        session_.OnBar(listener.onBar);
        session_.OnCancelPoll(listener.isCancelled);
    }
    ~Listening() {
        session_.OnLog(nullptr);
        session_.OnBar(nullptr);
        session_.OnCancelPoll(nullptr);
    }
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

  private:
    headless::Session& session_;
};

}  // namespace

CallResult Call(const SessionLock& /*lock*/, const Plugin& plugin, const std::wstring& name,
                const VariantList& arguments, bool hasProgressBar, const Listener& listener) {
    headless::Session& session = headless::Session::Current();
    session.Reset();
    session.SetInteractive(hasProgressBar);
    CallResult result;
    {
        const Listening listening(session, listener);
        result.code = plugin.Call(name.c_str(), arguments.Data());
    }
    result.userInput = plugin.UserInput();
    result.recording = session.Release();
    return result;
}

}  // namespace take
