#include "cli/tree.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <string>
#include <unordered_map>
#include <vector>

#include "cli/columns.h"
#include "export/object_types.h"
#include "headless/evaluation.h"
#include "headless/object_walk.h"
#include "headless/text.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace cli {
namespace {

using headless::Object;

// The widths of the name, the type and a coordinate, in terminal columns. A line has a name, a type
// and three coordinates, with a space between two of them, and is 79 columns wide.
constexpr int kNameColumns = 35;
constexpr int kTypeColumns = 13;
constexpr int kNumberColumns = 9;
// An object that is deeper than this is not indented further. Its depth is printed as a number.
constexpr std::size_t kDrawnDepth = 10;
constexpr std::size_t kColumnsPerLevel = 2;

using Position = std::array<double, 3>;

// Returns the position as outputs have it.
Position Exported(const double (&origin)[3], const exporters::Options& options) {
    Position position = {origin[0], origin[1], origin[2]};
    if (options.up == exporters::UpAxis::X) position = {-origin[1], origin[0], origin[2]};
    if (options.up == exporters::UpAxis::Z) position = {origin[0], origin[2], -origin[1]};
    for (double& coordinate : position)
        coordinate *= options.scale / options.enlarged;
    return position;
}

std::string Coordinate(double value) {
    std::string text = fmt::format("{:.3f}", value);
    if (text.size() > kNumberColumns) text = fmt::format("{:.1e}", value);
    if (text == "-0.000") text = "0.000";
    return text;
}

std::string NameColumn(const Object& object, std::size_t depth) {
    std::wstring indent(std::min(depth, kDrawnDepth) * kColumnsPerLevel, L' ');
    if (depth > kDrawnDepth) {
        const std::string number = fmt::format("({}) ", depth);
        indent.append(number.begin(), number.end());
    }
    const int left = kNameColumns - static_cast<int>(indent.size());
    const std::wstring name = Elide(text::EscapeControls(headless::View(object.name)), left);
    const int padding = left - DisplayWidth(name);
    return text::EncodeUtf8(indent + name) + std::string(static_cast<std::size_t>(padding), ' ');
}

void PrintRow(std::string_view name, std::string_view type, std::string_view x, std::string_view y,
              std::string_view z, const Print& print) {
    print(fmt::format("{} {:<{}} {:>{}} {:>{}} {:>{}}\n", name, type, kTypeColumns, x,
                      kNumberColumns, y, kNumberColumns, z, kNumberColumns));
}

void PrintModel(const headless::Scene& scene, const Object& model,
                const exporters::Options& options, const Print& print) {
    const headless::MotionEvaluator evaluator(scene, model, nullptr);
    const std::vector<const Object*>& objects = evaluator.Objects();
    std::vector<headless::Transform> globals(objects.size());
    evaluator.Evaluate(0.0, globals);
    std::unordered_map<const Object*, const headless::Transform*> globalOf;
    globalOf.reserve(objects.size());
    for (std::size_t index = 0; index < objects.size(); ++index)
        globalOf.emplace(objects[index], &globals[index]);

    headless::WalkObjects(model, [&](const Object& object, std::size_t depth) {
        const Position position = Exported(globalOf.at(&object)->origin, options);
        PrintRow(NameColumn(object, depth), exporters::TypeName(object.type),
                 Coordinate(position[0]), Coordinate(position[1]), Coordinate(position[2]), print);
    });
}

}  // namespace

void PrintTree(const headless::Scene& scene, const exporters::Options& options,
               const Print& print) {
    PrintRow(fmt::format("{:<{}}", "Name", kNameColumns), "Type", "x", "y", "z", print);
    for (const Object* model : scene.Models())
        PrintModel(scene, *model, options, print);
}

}  // namespace cli
