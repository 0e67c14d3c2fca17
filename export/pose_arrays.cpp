#include "export/pose_arrays.h"

#include <cstddef>

#include "export/quaternion.h"
#include "export/run_parts.h"

namespace exporters {
namespace {

using headless::Transform;

template <class Element>
void PutPosition(const Transform& transform, Element* numbers) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        numbers[axis] = static_cast<Element>(transform.origin[axis]);
}

template <class Element>
void PutQuaternion(const Transform& transform, Element* numbers) {
    const Quaternion q = QuaternionOf(transform.axes);
    const double inOrder[] = {q.x, q.y, q.z, q.w};
    for (std::size_t index = 0; index < 4; ++index)
        numbers[index] = static_cast<Element>(inOrder[index]);
}

template <class Element>
Element Cosine(const Element* a, const Element* b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

template <class Element>
void Negate(Element* q) {
    for (std::size_t part = 0; part < 4; ++part)
        q[part] = -q[part];
}

// Negates quaternions of a row that are farther from the one in the row before than their negatives
// are.
template <class Element>
void MakeContinuous(std::size_t row, std::size_t columns, Element* quaternions) {
    const std::size_t width = 4 * columns;
    Element* const numbers = quaternions + row * width;
    for (std::size_t index = 0; index < width; index += 4)
        if (Cosine(numbers + index, numbers + index - width) < Element{0}) Negate(numbers + index);
}

// Does the same for the rows from `first` to `end` - 1, of which all but the first are continuous.
template <class Element>
void Join(std::size_t first, std::size_t end, std::size_t columns, Element* quaternions) {
    const std::size_t width = 4 * columns;
    for (std::size_t column = 0; column < columns; ++column) {
        Element* q = quaternions + first * width + 4 * column;
        if (!(Cosine(q, q - width) < Element{0})) continue;
        Negate(q);
        // Where the cosine is 0, neither of the two quaternions is nearer, and the first one stays.
        for (std::size_t row = first + 1; row < end; ++row) {
            q += width;
            if (Cosine(q, q - width) == Element{0}) break;
            Negate(q);
        }
    }
}

// Evaluates the rows from `first` to `end` - 1. As the threads run at the same time, only one of
// them reports progress, as if its rows were all.
template <class Element>
void FillRows(const Table& table, std::size_t first, std::size_t end, const Progress& progress,
              const PosePointers<Element>& arrays) {
    const std::size_t columns = table.Columns().size();
    std::vector<Transform> locals(columns);
    std::vector<Transform> globals(columns);
    Table::Scratch scratch;
    for (std::size_t row = first; row < end; ++row) {
        progress.Report(row - first, end - first);
        table.Row(row, locals, globals, scratch);
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t index = row * columns + column;
            PutPosition(globals[column], &arrays.positions[3 * index]);
            PutQuaternion(globals[column], &arrays.quaternions[4 * index]);
            PutPosition(locals[column], &arrays.localPositions[3 * index]);
            PutQuaternion(locals[column], &arrays.localQuaternions[4 * index]);
        }
        if (row == first) continue;
        MakeContinuous(row, columns, arrays.quaternions);
        MakeContinuous(row, columns, arrays.localQuaternions);
    }
}

}  // namespace

template <class Element>
void FillPoseArrays(const Table& table, const PosePointers<Element>& arrays, std::size_t threads,
                    const Progress& progress) {
    const std::size_t rows = table.Rows();
    const std::size_t columns = table.Columns().size();
    const std::size_t parts = PartsFor(rows * columns, threads);
    const auto first = [&](std::size_t part) { return part * rows / parts; };
    RunParts(parts, [&](std::size_t part) {
        FillRows(table, first(part), first(part + 1), part == 0 ? progress : Progress(), arrays);
    });
    for (std::size_t part = 1; part < parts; ++part) {
        if (first(part) == 0 || first(part) == first(part + 1)) continue;
        Join(first(part), first(part + 1), columns, arrays.quaternions);
        Join(first(part), first(part + 1), columns, arrays.localQuaternions);
    }
}

template <class Element>
PoseArrays<Element> BuildPoseArrays(const Table& table, const Progress& progress) {
    const std::size_t poses = table.Rows() * table.Columns().size();
    PoseArrays<Element> arrays{LargeArray<Element>(3 * poses), LargeArray<Element>(4 * poses),
                               LargeArray<Element>(3 * poses), LargeArray<Element>(4 * poses)};
    if (poses == 0) return arrays;
    const PosePointers<Element> pointers{&arrays.positions[0], &arrays.quaternions[0],
                                         &arrays.localPositions[0], &arrays.localQuaternions[0]};
    FillPoseArrays(table, pointers, 0, progress);
    return arrays;
}

template void FillPoseArrays(const Table& table, const PosePointers<double>& arrays,
                             std::size_t threads, const Progress& progress);
template PoseArrays<float> BuildPoseArrays(const Table& table, const Progress& progress);
template PoseArrays<double> BuildPoseArrays(const Table& table, const Progress& progress);

}  // namespace exporters
