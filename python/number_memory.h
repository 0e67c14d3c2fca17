// Memory for the arrays of takes.
#pragma once

#include <cstddef>
#include <pybind11/numpy.h>
#include <vector>

namespace python {

// Returns an array whose numbers are not initialised.
//
// The system clears fresh memory before a process gets it, which takes about a third of the time in
// which poses are computed. A program that reads one take after the other drops the arrays of each.
// Therefore a limited amount of such memory is kept for the next arrays.
pybind11::array_t<double> MakeArray(const std::vector<std::size_t>& shape);

}  // namespace python
