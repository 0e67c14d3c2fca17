#include "headless/direction.h"

#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

namespace headless {

namespace {

// 180 / pi.
constexpr DoublePair kDegreesPerRadian = {0x1.ca5dc1a63c1f8p+5, -0x1.1e7ab456405f9p-49};

// The angles, in degrees, whose tangents are 0/64, 1/64 ... 64/64.
constexpr DoublePair kArcTangents[] = {
    {0, 0},
    {0x1.ca54356330eb5p-1, 0x1.3166fe8a5f0edp-55},
    {0x1.ca3794e52e2a8p+0, -0x1.b18cf3a9c5ff0p-54},
    {0x1.5785f1c5de44cp+1, 0x1.222a4e26a449dp-54},
    {0x1.c9c55326164cfp+1, -0x1.88708ff33aabap-55},
    {0x1.1de5ef1eac9b6p+2, -0x1.efd3ef1b5dd25p-53},
    {0x1.56c5d6668a4b3p+2, -0x1.fed98a21ac307p-53},
    {0x1.8f7b8650a52c1p+2, -0x1.0073a87a53093p-57},
    {0x1.c80044927fe83p+2, -0x1.2a9346eb4b87bp-53},
    {0x1.0026bd21ed72dp+3, 0x1.8731e8d4a7a1ep-52},
    {0x1.1c2e5c194d0b0p+3, 0x1.6109e7ac86fa3p-51},
    {0x1.3813dd78a3207p+3, -0x1.b782805c9e76cp-51},
    {0x1.53d4374d3c2a3p+3, 0x1.c5b7fa992d71fp-52},
    {0x1.6f6c792233213p+3, 0x1.f6b4a6941216ap-53},
    {0x1.8ad9cd905cd23p+3, -0x1.aa32691274d02p-51},
    {0x1.a6197ba2e6432p+3, -0x1.fc381b40d90d1p-51},
    {0x1.c128e80fae02ep+3, -0x1.0fc10e257c651p-53},
    {0x1.dc059642d780ap+3, 0x1.5b8ff72c7405dp-53},
    {0x1.f6ad293d8a981p+3, 0x1.8ffa0b91f5008p-51},
    {0x1.088eb2241f5ccp+4, 0x1.6a57af8628727p-51},
    {0x1.15aa15bcab87ep+4, 0x1.2f23fe5f78d35p-52},
    {0x1.22a7c208994d1p+4, 0x1.dea533ead0f89p-51},
    {0x1.2f86ca5693b95p+4, -0x1.921d12e9bd286p-51},
    {0x1.3c4652a9955f2p+4, 0x1.1bcbb4b7c1cdep-50},
    {0x1.48e58fac13547p+4, 0x1.bdef92fae944fp-51},
    {0x1.5563c6919a8b4p+4, 0x1.bcab4b30ae7bep-50},
    {0x1.61c04ce8103cap+4, 0x1.cb0f408701ac7p-51},
    {0x1.6dfa8859d6535p+4, 0x1.ea3f212fa9871p-52},
    {0x1.7a11ee6220071p+4, -0x1.63c539bb8dcc2p-55},
    {0x1.860603f4c96a8p+4, 0x1.bceb93ba4acd2p-51},
    {0x1.91d65d1b06e47p+4, 0x1.bba81c7320b23p-51},
    {0x1.9d829c863fc6ep+4, -0x1.4c44c990afd8bp-50},
    {0x1.a90a731a61dc4p+4, -0x1.80b27b26e182bp-51},
    {0x1.b46d9f70f341ep+4, 0x1.69d883300e647p-50},
    {0x1.bfabed561cab5p+4, -0x1.4f228abff8141p-50},
    {0x1.cac53540d8a5ep+4, 0x1.780766b724e95p-51},
    {0x1.d5b95bc765110p+4, 0x1.6f006acd20fc1p-52},
    {0x1.e08851110321cp+4, -0x1.67642f039c3f8p-50},
    {0x1.eb32104600588p+4, -0x1.cdc8f191d54cdp-50},
    {0x1.f5b69efef01ebp+4, -0x1.25da7435ce364p-50},
    {0x1.000b0659f5545p+5, 0x1.0e62435c62f2fp-49},
    {0x1.05283916493e1p+5, -0x1.3173f1f52bb47p-49},
    {0x1.0a32f878c76f4p+5, 0x1.ef68cf8c9d5bbp-49},
    {0x1.0f2b59600b557p+5, 0x1.5ccd879f582eep-53},
    {0x1.141174800a666p+5, 0x1.e004defca5108p-50},
    {0x1.18e5661eaf096p+5, -0x1.f6fb3f7dadf36p-51},
    {0x1.1da74dd22fa17p+5, -0x1.38573f69caa41p-51},
    {0x1.22574e414d420p+5, -0x1.edc775f88110ap-49},
    {0x1.26f58ce59e23cp+5, 0x1.80b27b26e182bp-50},
    {0x1.2b8231d001017p+5, 0x1.0443afc9c577ap-50},
    {0x1.2ffd676f50180p+5, 0x1.1391e62807a10p-50},
    {0x1.34675a5964a4ap+5, -0x1.5f6f933d393cdp-49},
    {0x1.38c03916765b8p+5, 0x1.50a2d34ee7050p-49},
    {0x1.3d0833eedd7a3p+5, 0x1.9dc7bce4324e9p-50},
    {0x1.413f7cbb39bbep+5, 0x1.cb329a1df12d3p-49},
    {0x1.456646b6fc992p+5, 0x1.f54dfd08543bfp-50},
    {0x1.497cc65551cf8p+5, -0x1.2dd089737cc28p-49},
    {0x1.4d8331185e338p+5, -0x1.fc3210ee74285p-52},
    {0x1.5179bd6aca3a8p+5, 0x1.67cc66a04f573p-49},
    {0x1.5560a27b8b76ap+5, -0x1.554bda8ab6ccdp-49},
    {0x1.5938181bde651p+5, 0x1.ea28ab192aaf3p-51},
    {0x1.5d00569f60689p+5, 0x1.9af83be845712p-49},
    {0x1.60b996be388b1p+5, -0x1.c843a99069d6dp-51},
    {0x1.646411793cab5p+5, 0x1.af4ff0274e33cp-49},
    {0x1.6800000000000p+5, 0},
};
constexpr double kSteps = static_cast<double>(std::size(kArcTangents) - 1);

// Returns atan(tangent) - tangent, in radians. The magnitude of `tangent` is at most 1/128, so few
// terms of the series are enough.
double ArcTangentCorrection(double tangent) {
    const double square = tangent * tangent;
    const double series =
        -1.0 / 3 + square * (1.0 / 5 + square * (-1.0 / 7 + square * (1.0 / 9 - square / 11)));
    return tangent * square * series;
}

// The arc tangent of shorter / longer, in degrees, where 0 <= shorter <= longer. The vector
// (longer, shorter) is first rotated by minus the nearest angle of the table. The angle that
// remains is small.
DoublePair ArcTangent(const DoublePair& shorter, const DoublePair& longer) {
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): half-way between two steps, either will do.
    const auto step = static_cast<std::size_t>(shorter.high / longer.high * kSteps + 0.5);
    const double tangent = static_cast<double>(step) / kSteps;
    const DoublePair rest =
        Quotient(Sum(shorter, Product(longer, -tangent)), Sum(longer, Product(shorter, tangent)));
    const DoublePair radians = {rest.high, rest.low + ArcTangentCorrection(rest.high)};
    const DoublePair degrees = {
        radians.high * kDegreesPerRadian.high,
        RoundingError(radians.high, kDegreesPerRadian.high, radians.high * kDegreesPerRadian.high) +
            radians.high * kDegreesPerRadian.low + radians.low * kDegreesPerRadian.high};
    return Sum(kArcTangents[step], degrees);
}

}  // namespace

DoublePair DirectionInDegrees(const DoublePair& sine, const DoublePair& cosine) {
    // Outside these limits, products overflow or are too small for a DoublePair. Accuracy matters
    // for the entries of rotation matrices, which are inside the limits.
    constexpr double kLargest = 1e150;
    constexpr double kSmallest = 1e-140;
    DoublePair y = std::signbit(sine.high) ? Negative(sine) : sine;
    DoublePair x = std::signbit(cosine.high) ? Negative(cosine) : cosine;
    const bool isSteep = y.high > x.high;
    if (isSteep) std::swap(x, y);
    if (!(x.high > kSmallest && x.high < kLargest && y.high >= 0.0))
        return {std::atan2(sine.high, cosine.high) * kDegreesPerRadian.high, 0.0};

    DoublePair angle = y.high == 0.0 ? DoublePair{0.0, 0.0} : ArcTangent(y, x);
    if (isSteep) angle = Sum({90.0, 0.0}, Negative(angle));
    if (std::signbit(cosine.high)) angle = Sum({180.0, 0.0}, Negative(angle));
    return std::signbit(sine.high) ? Negative(angle) : angle;
}

}  // namespace headless
