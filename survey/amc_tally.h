// Counts what is odd about a motion's frames, and reports it. The severity of most findings depends
// on how many frames have the oddity, so these are reported after the last frame.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "survey/amc_values.h"
#include "survey/finding_list.h"

namespace survey {

class AmcTally {
  public:
    AmcTally(const AsfSkeleton& skeleton, FindingList& findings)
        : skeleton_(skeleton), findings_(findings) {}

    // Adds the events of the next frame.
    void Add(const std::vector<AmcEvent>& events);

    // To be called after the last frame. `frames` is the number of frames. `findMissing` gets the
    // start of a frame in the text, and finds the first bone that has a row in the motion but none
    // in that frame.
    void Report(const AmcValues& values, std::size_t frames,
                const std::function<std::uint32_t(const char*)>& findMissing);

  private:
    // The frames in which the same number of bones have no row.
    struct Lack {
        std::size_t frames = 0;       // number of these frames
        const char* first = nullptr;  // where the first of these frames begins
    };
    // The frames that have an oddity.
    struct Tally {
        std::size_t frames = 0;  // number of these frames
        AmcEvent first{};        // the first case of the oddity
    };

    void AddEvent(const AmcEvent& event);
    void AddFinding(std::string_view code, Severity severity, const AmcEvent& event,
                    const std::string& message, bool mended = true);
    void ReportTally(std::string_view code, const Tally& tally, std::size_t frames,
                     const std::string& what);
    void ReportMissing(const AmcValues& values, std::size_t frames,
                       const std::function<std::uint32_t(const char*)>& findMissing);
    void ReportAbsent(const AmcValues& values);
    void AddUnknown(const AmcEvent& event);
    void ReportUnknown();
    void ReportNotFinite(std::size_t all);
    std::string NameOf(const AmcEvent& event) const;

    const AsfSkeleton& skeleton_;
    FindingList& findings_;
    Tally fewer_;
    Tally more_;
    std::map<std::size_t, Lack> missing_;  // by the number of bones that have no row in a frame
    struct Unknown {
        std::string name;
        std::size_t rows = 0;
    };
    std::vector<Unknown> unknown_;
    // By name in lower case: its index in `unknown_`.
    std::unordered_map<std::string, std::size_t> unknownIndex_;
    std::size_t unknownRows_ = 0;
    AmcEvent firstUnknown_{};
    std::size_t notFinite_ = 0;
    AmcEvent firstNotFinite_{};
};

}  // namespace survey
