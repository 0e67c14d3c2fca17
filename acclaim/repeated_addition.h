#pragma once

#include <cstddef>

// What is in `sum` after `sum += term` was done `times` times, to the last bit, in a number of
// steps that hardly depends on `times`.
double AddRepeatedly(double sum, double term, std::size_t times);
