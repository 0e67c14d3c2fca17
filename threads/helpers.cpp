#include "threads/helpers.h"

#include <algorithm>

#include "threads/signals_blocked.h"

namespace threads {
Helpers::Helpers(std::size_t count, Work work, void* context) noexcept
    : work_(work), context_(context) {
    if (count == 0) return;
    const SignalsBlocked blocked;  // a host handles its signals on its own threads
    for (count = std::min(count, kMost); started_ < count; ++started_)
        if (pthread_create(&threads_[started_], nullptr, Run, this) != 0) return;
}

void* Helpers::Run(void* helpers) noexcept {
    const Helpers& self = *static_cast<const Helpers*>(helpers);
    self.work_(self.context_);
    return nullptr;
}

void Helpers::Join() noexcept {
    while (started_ > 0)
        pthread_join(threads_[--started_], nullptr);
}

}  // namespace threads
