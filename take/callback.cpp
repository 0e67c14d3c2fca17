#include "take/callback.h"

namespace take {
namespace {

// Connects the listener to the session; disconnects it when the scope ends.
class ListenerScope {
  public:
    ListenerScope(headless::Session& session, const Listener& listener) : session_(session) {
        session_.OnLog(listener.onLog);
        session_.OnBar(listener.onBar);
        session_.OnCancelPoll(listener.isCancelled);
    }
    ~ListenerScope() {
        session_.OnLog(nullptr);
        session_.OnBar(nullptr);
        session_.OnCancelPoll(nullptr);
    }
    ListenerScope(const ListenerScope&) = delete;
    ListenerScope& operator=(const ListenerScope&) = delete;

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
        const ListenerScope scope(session, listener);
        result.code = plugin.Call(name.c_str(), arguments.Data());
    }
    result.userInput = plugin.UserInput();
    result.recording = session.Release();
    return result;
}

}  // namespace take
