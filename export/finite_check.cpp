#include "export/finite_check.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fmt/format.h>

#include "export/options.h"
#include "export/readable_name.h"
#include "headless/object_walk.h"

namespace exporters {
namespace {

using headless::Object;

// Whether all bits of the exponent of one of the numbers are set. This loop has no branch, so that
// the compiler vectorises it.
template <class Numbers>
bool AreFinite(const Numbers& numbers) {
    constexpr std::uint64_t kExponent = std::uint64_t{0x7FF} << 52U;
    constexpr std::uint64_t kLowest = std::uint64_t{1} << 52U;
    std::uint64_t sums = 0;
    for (const double number : numbers) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        sums |= (bits & kExponent) + kLowest;
    }
    return sums >> 63U == 0;
}

// `times` are key times that are known to be finite, or null. Most curves share them. Sets it to
// those of this item.
void RequireFiniteKeys(const Object& model, const headless::ActionItem& item,
                       const headless::NumberArray*& times) {
    const headless::Keys& keys = item.GetCurve().keys;
    if (!keys.times || !keys.values) return;
    if ((keys.times.get() == times || AreFinite(*keys.times)) && AreFinite(*keys.values)) {
        times = keys.times.get();
        return;
    }
    const auto time = std::find_if_not(keys.times->begin(), keys.times->end(), IsFinite);
    if (time != keys.times->end())
        throw ExportError(fmt::format("{}.{}: the time of a key is not a finite number",
                                      ReadableName(model.name), ReadableName(item.Target())));
    const auto value = std::find_if_not(keys.values->begin(), keys.values->end(), IsFinite);
    if (value == keys.values->end()) return;
    const auto index = static_cast<std::size_t>(value - keys.values->begin());
    throw ExportError(fmt::format("{}.{} is not a finite number in frame {}",
                                  ReadableName(model.name), ReadableName(item.Target()),
                                  (*keys.times)[index]));
}

}  // namespace

// The sum is infinite or NaN if one of the numbers in it is.
bool HoldsFiniteNumbers(const headless::Transform& transform) {
    double sum = 0.0;
    for (int row = 0; row < 3; ++row) {
        sum += std::abs(transform.origin[row]);
        for (int column = 0; column < 3; ++column)
            sum += std::abs(transform.axes[row][column]);
    }
    return IsFinite(sum);
}

void RequireFinite(const Object& model, const headless::ActionSource* motion) {
    headless::WalkObjects(model, [&](const Object& object, std::size_t) {
        const bool isFinite = std::all_of(object.local.begin(), object.local.end(), IsFinite) &&
                              IsFinite(object.length);
        if (!isFinite)
            throw ExportError(
                fmt::format("{}.{} has no finite position, rotation or length at rest",
                            ReadableName(model.name), ReadableName(object.name)));
    });
    if (!motion) return;
    const headless::NumberArray* times = nullptr;
    for (const headless::ActionItem& item : motion->items) {
        if (!item.active) continue;
        if (item.IsCurve())
            RequireFiniteKeys(model, item, times);
        else if (!IsFinite(item.Value()))
            throw ExportError(fmt::format("{}.{} is not a finite number", ReadableName(model.name),
                                          ReadableName(item.Target())));
    }
}

}  // namespace exporters
