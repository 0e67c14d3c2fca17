// The parts of the extension module. Each function adds the functions and classes of one subject.
#pragma once

#include <pybind11/pybind11.h>

namespace python {

void BindImports(pybind11::module_& module);  // reading files, building scenes from arrays
void BindTables(pybind11::module_& module);   // the arrays of a scene
void BindOutputs(pybind11::module_& module);  // writing files
void BindSurveys(pybind11::module_& module);  // checking files, pairing their names

}  // namespace python
