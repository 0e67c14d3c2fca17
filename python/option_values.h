// Turns the values of Python's keyword arguments into options.
#pragma once

#include <pybind11/pybind11.h>

#include "export/options.h"
#include "take/request.h"

namespace python {

// `values` has the names of the members of take::Request and exporters::Options in Python. The
// package has checked the values, so that only a mistake in the package lets these functions throw.
void PutImportOptions(const pybind11::dict& values, take::Request& request);
exporters::Options ExportOptionsOf(const pybind11::dict& values);

// A file is a tuple of its path as bytes, its contents as bytes or None, and the name that stands
// for a file without a path.
take::InputFile InputFileOf(const pybind11::tuple& file);

}  // namespace python
