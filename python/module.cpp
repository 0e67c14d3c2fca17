// The extension module of the Python package. The package's own modules call it; users do not.
#include <pybind11/pybind11.h>

#include "python/bindings.h"

PYBIND11_MODULE(_core, module) {
    module.doc() = "The library behind zkmocaputils.";
    module.attr("version") = ZKMOCAP_VERSION;
    python::BindImports(module);
    python::BindTables(module);
    python::BindOutputs(module);
    python::BindSurveys(module);
}
