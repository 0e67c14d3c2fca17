#include "export/fbx_objects.h"

#include <cstddef>

namespace exporters {
namespace {

// A name is followed by two bytes and the name of a class. A zero byte in the name would end it, so
// it becomes the character for what cannot be shown (U+FFFD).
std::string FullName(std::string_view name, std::string_view kind) {
    std::string full;
    for (const char character : name) {
        if (character == '\0')
            full += "\xEF\xBF\xBD";
        else
            full += character;
    }
    full += '\0';
    full += '\1';
    full += kind;
    return full;
}

}  // namespace

FbxNode& AddFbxProperty(FbxNode& properties, std::string_view name, std::string_view type,
                        std::string_view label, std::string_view flags) {
    return properties.Add("P").Text(name).Text(type).Text(label).Text(flags);
}

void AddFbxVector(FbxNode& properties, std::string_view name, std::string_view type,
                  std::string_view flags, const std::array<double, 3>& value) {
    FbxNode& entry = AddFbxProperty(properties, name, type, "", flags);
    for (const double number : value)
        entry.Double(number);
}

void AddFbxTime(FbxNode& properties, std::string_view name, std::int64_t time) {
    AddFbxProperty(properties, name, "KTime", "Time").Long(time);
}

// FBX stores matrices for column vectors, column by column. A Transform is a matrix for row vectors
// and is stored row by row. The numbers therefore have the same order in both.
std::array<double, 16> FbxMatrixOf(const headless::Transform& transform) {
    std::array<double, 16> matrix{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            matrix[4 * row + column] = transform.axes[row][column];
        matrix[12 + row] = transform.origin[row];
    }
    matrix[15] = 1.0;
    return matrix;
}

FbxObjects::Object FbxObjects::Add(std::string_view type, std::string_view kind,
                                   std::string_view name, std::string_view variant) {
    ++counts_[std::string(type)];
    FbxNode& node = objects_.Add(type).Long(++last_).Text(FullName(name, kind)).Text(variant);
    return {last_, node};
}

void FbxObjects::Connect(std::int64_t object, std::int64_t owner) {
    connections_.Add("C").Text("OO").Long(object).Long(owner);
}

void FbxObjects::Connect(std::int64_t object, std::int64_t owner, std::string_view property) {
    connections_.Add("C").Text("OP").Long(object).Long(owner).Text(property);
}

std::int64_t AddFbxModel(FbxObjects& objects, std::string_view name, std::string_view variant,
                         std::int64_t owner, const std::array<double, 6>& local) {
    const FbxObjects::Object model = objects.Add("Model", "Model", name, variant);
    model.node.AddInt("Version", 232);
    FbxNode& properties = model.node.Add("Properties70");
    // A child inherits rotation and scale in that order (RSrs).
    AddFbxProperty(properties, "InheritType", "enum").Int(1);
    AddFbxProperty(properties, "DefaultAttributeIndex", "int", "Integer").Int(0);
    AddFbxVector(properties, "Lcl Translation", "Lcl Translation", "A",
                 {local[0], local[1], local[2]});
    AddFbxVector(properties, "Lcl Rotation", "Lcl Rotation", "A", {local[3], local[4], local[5]});
    model.node.Add("Shading").Bool(true);
    model.node.AddText("Culling", "CullingOff");
    objects.Connect(model.id, owner);
    return model.id;
}

}  // namespace exporters
