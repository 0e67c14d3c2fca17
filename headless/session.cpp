#include "headless/session.h"

#include <utility>

#include "headless/operations.h"
#include "headless/session_state.h"

namespace headless {

void Session::Impl::AddLog(LogLine line) {
    log.push_back(std::move(line));
    // The listener gets a copy, because it may add further lines, and adding lines can move the
    // elements of `log` in memory.
    if (onLog) onLog(LogLine(log.back()));
}

// Each event reserves memory for one further event, except the event that hides the bar. So the bar
// can be hidden even after memory has run out.
void Session::Impl::AddBar(BarEvent event) {
    const bool isHiding = event.kind == BarEvent::Kind::Visible && event.number == 0;
    if (!isHiding) ReserveRoom(bar, 2);
    bar.push_back(std::move(event));
    if (onBar) onBar(BarEvent(bar.back()));
}

std::int16_t Session::Impl::ReadCancelFlag() {
    ++polls;
    bool isPressed =
        pressed.load(std::memory_order_relaxed) || (pressAtPoll != 0 && polls >= pressAtPoll);
    if (!isPressed && onCancelPoll && onCancelPoll()) {
        pressed.store(true, std::memory_order_relaxed);
        isPressed = true;
    }
    return isPressed ? pressedValue : std::int16_t{0};
}

Session::Impl& SessionAccess::Current() {
    return *Session::Current().impl_;
}

Session::Session() : impl_(std::make_unique<Impl>()) {}

Session::~Session() = default;

Session& Session::Current() {
    // The session is never destroyed, because a signal handler may press its cancel button while
    // the process exits.
    static auto* const session = new Session;
    return *session;
}

// The members are reset one by one and the session is not replaced, because a signal handler may
// use its cancel button and callers may hold a reference to its scene.
void Session::Reset() {
    SceneEditor::Clear(impl_->scene);
    impl_->log.clear();
    impl_->bar.clear();
    impl_->commands.clear();
    impl_->onLog = nullptr;
    impl_->onBar = nullptr;
    impl_->onCancelPoll = nullptr;
    impl_->interactive = false;
    impl_->pressed.store(false, std::memory_order_relaxed);
    impl_->pressAtPoll = 0;
    impl_->polls = 0;
    impl_->pressedValue = -1;
    ResetOperations();
}

Recording Session::Release() {
    Recording released;
    // The scene is moved first, because this is the only step that can fail.
    released.scene = SceneEditor::Release(impl_->scene);
    released.log.swap(impl_->log);
    released.bar.swap(impl_->bar);
    released.commands.swap(impl_->commands);
    return released;
}

void Session::SetInteractive(bool interactive) {
    impl_->interactive = interactive;
}

void Session::PressCancel() noexcept {
    impl_->pressed.store(true, std::memory_order_relaxed);
}

void Session::OnCancelPoll(std::function<bool()> isCancelled) {
    impl_->onCancelPoll = std::move(isCancelled);
}

void Session::OnLog(std::function<void(const LogLine&)> listener) {
    impl_->onLog = std::move(listener);
}

void Session::OnBar(std::function<void(const BarEvent&)> listener) {
    impl_->onBar = std::move(listener);
}

const Scene& Session::GetScene() const {
    return impl_->scene;
}

const std::vector<LogLine>& Session::Log() const {
    return impl_->log;
}

const std::vector<BarEvent>& Session::Bar() const {
    return impl_->bar;
}

const std::vector<CommandRecord>& Session::Commands() const {
    return impl_->commands;
}

}  // namespace headless
