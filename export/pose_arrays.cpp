#include "export/pose_arrays.h"

#include <algorithm>
#include <cstddef>
#include <future>
#include <thread>

#include "export/launch.h"
#include "export/quaternion.h"

namespace exporters {
namespace {

using headless::Transform;

// A thread that has fewer poses of joints to evaluate would hardly be worth its start.
constexpr std::size_t kFewestPoses = 20'000;

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
    }
}

// Negates quaternions that are farther from the one in the row before than their negatives are.
template <class Element>
void MakeContinuous(std::size_t rows, std::size_t columns, Element* quaternions) {
    const std::size_t width = 4 * columns;
    for (std::size_t index = width; index < rows * width; index += 4) {
        Element* const q = &quaternions[index];
        const Element* const before = q - width;
        const Element cosine =
            q[0] * before[0] + q[1] * before[1] + q[2] * before[2] + q[3] * before[3];
        if (cosine < Element{0})
            for (std::size_t part = 0; part < 4; ++part)
                q[part] = -q[part];
    }
}

}  // namespace

template <class Element>
void FillPoseArrays(const Table& table, const PosePointers<Element>& arrays, std::size_t threads,
                    const Progress& progress) {
    const std::size_t rows = table.Rows();
    const std::size_t columns = table.Columns().size();
    if (threads == 0) threads = std::max(1U, std::thread::hardware_concurrency());
    const std::size_t parts = std::clamp<std::size_t>(rows * columns / kFewestPoses, 1, threads);
    std::vector<std::future<void>> others;
    for (std::size_t part = 1; part < parts; ++part)
        others.push_back(std::async(kLaunch, [&, part] {
            FillRows(table, part * rows / parts, (part + 1) * rows / parts, Progress(), arrays);
        }));
    // If this throws, the destructors of the futures wait for the other threads.
    FillRows(table, 0, rows / parts, progress, arrays);
    for (std::future<void>& other : others)
        other.get();
    MakeContinuous(rows, columns, arrays.quaternions);
    MakeContinuous(rows, columns, arrays.localQuaternions);
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
