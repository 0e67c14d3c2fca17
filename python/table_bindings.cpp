// The arrays of a scene.
#include <algorithm>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>
#include <stdexcept>

#include "export/pose_reader.h"
#include "python/bindings.h"
#include "python/number_memory.h"
#include "python/option_values.h"
#include "python/scene.h"
#include "python/watcher.h"
#include "text/byte_sink.h"

namespace python {

namespace py = pybind11;

namespace {

using exporters::PoseColumn;

// Makes the array read-only.
template <class Array>
Array Frozen(Array array) {
    array.attr("setflags")(py::arg("write") = false);
    return array;
}

template <class Number>
py::array_t<Number> ArrayOf(const std::vector<Number>& numbers) {
    return Frozen(py::array_t<Number>(static_cast<py::ssize_t>(numbers.size()), numbers.data()));
}

class Table {
  public:
    Table(SharedScene scene, const py::dict& options)
        : scene_(std::move(scene)), options_(scene_->Complete(ExportOptionsOf(options))) {
        std::string problem;
        {
            const py::gil_scoped_release unlocked;
            reader_ = std::make_unique<const exporters::PoseReader>(scene_->result.Scene(),
                                                                    options_, problem);
        }
        if (!problem.empty()) throw py::value_error(problem);
    }

    py::dict Describe() const {
        const exporters::PoseTable& table = reader_->Table();
        std::vector<std::string> names, sourceNames;
        std::vector<std::int32_t> parents;
        py::array_t<double> offsets({table.columns.size(), std::size_t{3}});
        py::array_t<bool> areEnds(static_cast<py::ssize_t>(table.columns.size()));
        double* offset = offsets.mutable_data();
        bool* isEnd = areEnds.mutable_data();
        for (const PoseColumn& column : table.columns) {
            names.push_back(column.name);
            sourceNames.push_back(column.sourceName);
            const bool isTop = column.parent == exporters::FileJoint::kNoParent;
            parents.push_back(isTop ? -1 : static_cast<std::int32_t>(column.parent));
            offset = std::copy_n(column.offset.begin(), 3, offset);
            *isEnd++ = column.isEndSite;
        }
        py::dict described;
        described["names"] = names;
        described["source_names"] = sourceNames;
        described["parents"] = ArrayOf(parents);
        described["offsets"] = Frozen(std::move(offsets));
        described["is_end"] = Frozen(std::move(areEnds));
        described["times"] = ArrayOf(table.seconds);
        described["frame_numbers"] = ArrayOf(table.frameNumbers);
        described["fps"] = table.framesPerSecond;
        const exporters::PoseFigure figure = Figure();
        described["unit"] = figure.metresPerUnit;
        described["height"] = figure.height;
        described["up"] = std::string(1, figure.up);
        described["notes"] = table.notes;
        return described;
    }

    // Returns the four arrays, read-only.
    py::tuple Arrays(std::size_t threads) const {
        const std::size_t rows = reader_->Table().seconds.size();
        const std::size_t columns = reader_->Table().columns.size();
        const auto make = [&](std::size_t width) { return MakeArray({rows, columns, width}); };
        py::array_t<double> arrays[] = {make(3), make(4), make(3), make(4)};
        Fill({arrays[0].mutable_data(), arrays[1].mutable_data(), arrays[2].mutable_data(),
              arrays[3].mutable_data()},
             threads);
        return py::make_tuple(Frozen(arrays[0]), Frozen(arrays[1]), Frozen(arrays[2]),
                              Frozen(arrays[3]));
    }

    // Writes the four arrays one after the other into the memory of a buffer of doubles.
    void FillBuffer(py::array_t<double, py::array::c_style>& buffer, std::size_t threads) const {
        const std::size_t poses = reader_->Table().seconds.size() * reader_->Table().columns.size();
        if (static_cast<std::size_t>(buffer.size()) < 14 * poses)
            throw std::invalid_argument("the buffer is too small");
        double* const start = buffer.mutable_data();
        Fill({start, start + 3 * poses, start + 7 * poses, start + 10 * poses}, threads);
    }

  private:
    exporters::PoseFigure Figure() const {
        const py::gil_scoped_release unlocked;
        return reader_->Figure();
    }

    void Fill(const exporters::PoseMemory& memory, std::size_t threads) const {
        Watcher watcher{py::none()};
        std::string problem;
        try {
            const py::gil_scoped_release unlocked;
            const exporters::Progress progress([&](double share) {
                if (watcher.Poll(share)) throw text::WriteCancelled();
            });
            problem = reader_->Read(memory, threads, progress);
        } catch (const text::WriteCancelled&) {
            watcher.Rethrow();
        }
        if (!problem.empty()) throw py::value_error(problem);
    }

    SharedScene scene_;
    exporters::Options options_;
    std::unique_ptr<const exporters::PoseReader> reader_;
};

}  // namespace

void BindTables(py::module_& module) {
    py::class_<Table>(module, "Table")
        .def(py::init([](const std::shared_ptr<Scene>& scene, const py::dict& options) {
            return std::make_unique<Table>(scene, options);
        }))
        .def("describe", &Table::Describe)
        .def("arrays", &Table::Arrays)
        .def("fill", &Table::FillBuffer);
}

}  // namespace python
