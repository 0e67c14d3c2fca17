// Reports how much of an output has been written, so that a program can draw a progress bar and let
// the user cancel.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <functional>
#include <utility>

namespace exporters {

// An object of this class stands for the whole of an output or for a part of it. Copies report to
// the same function.
class Progress {
  public:
    // Reports to nobody.
    Progress() = default;
    // `report` receives the share of the output that is done, from 0 to 1. The share never falls.
    // `report` is called on the thread that called the exporter. To cancel, it throws
    // text::WriteCancelled, which the exporters pass on.
    explicit Progress(std::function<void(double share)> report) : report_(std::move(report)) {}

    // Returns the progress of the part between two shares of this object.
    Progress Between(double from, double to) const {
        Progress part(*this);
        part.from_ = At(from);
        part.to_ = At(to);
        return part;
    }
    // Returns the progress of the part with this index, counted from 0, of `count` equal parts.
    Progress Part(std::size_t index, std::size_t count) const {
        const auto parts = static_cast<double>(count);
        const auto first = static_cast<double>(index);
        return Between(first / parts, (first + 1.0) / parts);
    }

    // Call it in each pass of a loop with `count` passes, before the pass with this index, counted
    // from 0. It reports before at most about kReports passes and does nothing before the others,
    // so it costs next to nothing even if a pass is short.
    void Report(std::size_t index, std::size_t count) const {
        if (report_ && index % (count / kReports + 1) == 0)
            report_(At(static_cast<double>(index) / static_cast<double>(count)));
    }

  private:
    static constexpr std::size_t kReports = 512;

    double At(double share) const { return from_ + share * (to_ - from_); }

    std::function<void(double)> report_;
    double from_ = 0.0;
    double to_ = 1.0;
};

}  // namespace exporters
