#pragma once

#include <cstddef>

// Returns, to the last bit, what `sum` would be after `times` repetitions of `sum += term`. The
// running time hardly depends on `times`.
double AddRepeatedly(double sum, double term, std::size_t times);
