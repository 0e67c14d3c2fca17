// Numbers of about 106 significant bits. Each number is stored as two doubles; its value is their
// exact sum. The results are the same on every machine. They are accurate if the operands are
// finite and no product of them overflows or has a magnitude below 1e-290.
#pragma once

#include <cmath>

namespace headless {

struct DoublePair {
    double high;
    double low;  // its magnitude is at most a few units in the last bit of `high`
};

// The exact sum a + b (D. E. Knuth, The Art of Computer Programming, volume 2, 4.2.2, theorem B).
inline DoublePair ExactSum(double a, double b) {
    const double sum = a + b;
    const double part = sum - a;
    return {sum, (a - (sum - part)) + (b - part)};
}

// Returns the exact a * b minus `product`. `product` must be a * b rounded to a double. Where the
// processor has no fast std::fma, both factors are split into halves, whose products are exact (T.
// J. Dekker, A floating-point technique for extending the available precision, 1971).
inline double RoundingError(double a, double b, double product) {
#ifdef __FP_FAST_FMA
    return std::fma(a, b, -product);
#else
    constexpr double kSplit = 0x1p27 + 1.0;
    const double aHigh = kSplit * a - (kSplit * a - a);
    const double bHigh = kSplit * b - (kSplit * b - b);
    const double aLow = a - aHigh;
    const double bLow = b - bHigh;
    return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
#endif
}

// If a result of the functions below is zero, its sign is the one that the same operation on
// doubles would give.

inline DoublePair Product(double a, double b) {
    const double product = a * b;
    return {product, RoundingError(a, b, product)};
}

inline DoublePair Product(const DoublePair& a, double b) {
    const double product = a.high * b;
    return {product, RoundingError(a.high, b, product) + a.low * b};
}

inline DoublePair Sum(const DoublePair& a, const DoublePair& b) {
    const DoublePair sum = ExactSum(a.high, b.high);
    const double low = sum.low + (a.low + b.low);
    if (low == 0.0) return {sum.high, 0.0};
    return ExactSum(sum.high, low);
}

inline DoublePair Negative(const DoublePair& a) {
    return {-a.high, -a.low};
}

inline DoublePair Quotient(const DoublePair& a, const DoublePair& b) {
    const double quotient = a.high / b.high;
    const DoublePair multiple = Product(b, quotient);
    return {quotient, ((a.high - multiple.high) - multiple.low + a.low) / b.high};
}

// `a` must be greater than zero.
inline DoublePair SquareRoot(const DoublePair& a) {
    const double root = std::sqrt(a.high);
    const DoublePair square = Product(root, root);
    return {root, ((a.high - square.high) - square.low + a.low) / (2.0 * root)};
}

}  // namespace headless
