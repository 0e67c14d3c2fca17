#include "survey/amc_rate.h"

#include <algorithm>
#include <cmath>

#include "survey/codes.h"
#include "text/number_text.h"

namespace survey {
namespace {

// All rates are in frames per second. This one is used if neither the file nor the user states one.
constexpr double kUsualRate = 30.0;
// The plug-in ignores rates below this.
constexpr int kLowestRate = 2;
constexpr double kHighestRate = 1e9;

void ReportRateText(const AmcHeader& header, bool mended, FindingList& findings) {
    const std::string rate = text::NumberText(header.rate);
    findings.Add({codes::kRateText, Severity::Note, header.rateAt,
                  header.isRateLate
                      ? "the rate of " + rate + " is stated after :FULLY-SPECIFIED; it is read"
                      : "the rate of " + rate + " is no whole number; exports use it as stated",
                  "", mended});
}

}  // namespace

int NearestRate(double rate) {
    return static_cast<int>(std::lround(std::min(rate, kHighestRate)));
}

std::string WrittenRate(const AmcHeader& header, Purpose purpose) {
    if (header.rateText.empty()) return {};
    // A rate below 1 may be written as ".5" in the file. The plug-in refuses a number that has no
    // digit before its point, so such a rate is written anew.
    if (purpose == Purpose::Fix)
        return header.rate < 1.0 ? text::NumberText(header.rate) : std::string(header.rateText);
    return std::to_string(NearestRate(header.rate));
}

void DecideRate(const Options& options, bool isArchive, bool degrees, FindingList& findings,
                AmcMotion& motion) {
    const AmcHeader& header = motion.header;
    const bool isStated = !header.rateText.empty();
    const bool isPlain =
        PlugInReadsHeader(findings.Source().Text(), header, degrees, motion.plugInRate);
    if (!isPlain) motion.changed = true;
    const int nearest = isStated ? NearestRate(header.rate) : 0;
    // The plug-in only reads rates that are whole numbers. A rate that it does not read is a reason
    // to change the file for Purpose::Import, but not for Purpose::Fix.
    const bool isRead = !isStated || nearest < kLowestRate || motion.plugInRate == nearest;
    const bool isWritten = !isRead && options.purpose == Purpose::Import;
    if (isWritten || (isStated && header.isRateLate)) motion.changed = true;
    if (options.framesPerSecond) {
        motion.framesPerSecond = *options.framesPerSecond;
        return;
    }
    motion.framesPerSecond = isStated ? header.rate : isArchive ? kArchiveRate : kUsualRate;
    if (isStated && (header.isRateLate || header.rate != std::floor(header.rate)))
        ReportRateText(header, header.isRateLate || isWritten, findings);
    if (!isStated && !isArchive)
        findings.Add({codes::kRateMissing, Severity::Warning, nullptr,
                      "the motion does not state how many frames a second has; it is read as 30, "
                      "and --fps states another"});
}

}  // namespace survey
