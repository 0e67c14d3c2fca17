// A scene that Python objects share.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "export/json_record.h"
#include "export/options.h"
#include "take/import.h"
#include "take/request.h"

namespace python {

// It never changes after it was built. Several tables and outputs may read it at once.
struct Scene {
    // Of a scene that was built from arrays, `result` has only the recording.
    take::Request request;
    take::Result result;
    bool isFromArrays = false;
    std::vector<exporters::FileSkeleton> skeletons;  // only of a scene that was built from arrays

    // Returns the options, completed with what is known about the scene.
    exporters::Options Complete(const exporters::Options& chosen,
                                std::vector<exporters::SourceFile> files = {}) const;
    // The record refers to this scene.
    exporters::RunRecord Record() const;
};

using SharedScene = std::shared_ptr<const Scene>;

// Marks that the calling thread imports, because an import must not start another one. The
// constructor throws std::runtime_error if it imports already.
class ImportScope {
  public:
    ImportScope();
    ~ImportScope();
    ImportScope(const ImportScope&) = delete;
    ImportScope& operator=(const ImportScope&) = delete;
};

}  // namespace python
