#pragma once

#include <cstddef>

// Returns the value that `sum` has after `sum += term` was executed `times` times. The result is
// the same to the last bit. The running time hardly depends on `times`.
double AddRepeatedly(double sum, double term, std::size_t times);
