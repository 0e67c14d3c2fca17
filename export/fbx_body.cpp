#include "export/fbx_body.h"

#include <array>
#include <cstddef>
#include <span>

#include "export/body_mesh.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Transform;

constexpr std::array<double, 3> kColor = {0.62, 0.66, 0.7};

// The lists of a mesh. A triangle has three corners, and each corner has a normal.
struct MeshLists {
    std::vector<double> positions;      // x, y, z of each vertex
    std::vector<std::int32_t> corners;  // vertices; the last one of each triangle is inverted (~)
    std::vector<double> normals;        // x, y, z of each corner
};

MeshLists ListsOf(const BodyMesh& body) {
    MeshLists lists;
    for (const auto& position : body.positions)
        lists.positions.insert(lists.positions.end(), position.begin(), position.end());
    for (std::size_t corner = 0; corner < body.indices.size(); ++corner) {
        const auto vertex = static_cast<std::int32_t>(body.indices[corner]);
        lists.corners.push_back(corner % 3 == 2 ? ~vertex : vertex);
        const auto& normal = body.normals[body.indices[corner]];
        lists.normals.insert(lists.normals.end(), normal.begin(), normal.end());
    }
    return lists;
}

template <class Number>
void AddNumbers(FbxNode& node, std::string_view name, const std::vector<Number>& numbers) {
    node.Add(name).Numbers(std::span<const Number>(numbers));
}

FbxNode& AddLayerElement(FbxNode& geometry, std::string_view type, std::string_view mapping,
                         std::string_view reference) {
    FbxNode& element = geometry.Add(type).Int(0);
    element.AddInt("Version", 101);
    element.AddText("Name", "");
    element.AddText("MappingInformationType", mapping);
    element.AddText("ReferenceInformationType", reference);
    return element;
}

std::int64_t AddGeometry(FbxObjects& objects, const std::string& name, const BodyMesh& body,
                         std::int64_t mesh) {
    const FbxObjects::Object geometry = objects.Add("Geometry", "Geometry", name, "Mesh");
    const MeshLists lists = ListsOf(body);
    geometry.node.AddInt("GeometryVersion", 124);
    AddNumbers(geometry.node, "Vertices", lists.positions);
    AddNumbers(geometry.node, "PolygonVertexIndex", lists.corners);
    FbxNode& normals =
        AddLayerElement(geometry.node, "LayerElementNormal", "ByPolygonVertex", "Direct");
    AddNumbers(normals, "Normals", lists.normals);
    FbxNode& materials =
        AddLayerElement(geometry.node, "LayerElementMaterial", "AllSame", "IndexToDirect");
    AddNumbers(materials, "Materials", std::vector<std::int32_t>{0});
    FbxNode& layer = geometry.node.Add("Layer").Int(0);
    layer.AddInt("Version", 100);
    for (const char* const type : {"LayerElementNormal", "LayerElementMaterial"}) {
        FbxNode& element = layer.Add("LayerElement");
        element.AddText("Type", type);
        element.AddInt("TypedIndex", 0);
    }
    objects.Connect(geometry.id, mesh);
    return geometry.id;
}

void AddMaterial(FbxObjects& objects, const std::string& name, std::int64_t mesh) {
    const FbxObjects::Object material = objects.Add("Material", "Material", name, "");
    material.node.AddInt("Version", 102);
    material.node.AddText("ShadingModel", "lambert");
    material.node.AddInt("MultiLayer", 0);
    FbxNode& properties = material.node.Add("Properties70");
    AddFbxVector(properties, "DiffuseColor", "Color", "A", kColor);
    AddFbxProperty(properties, "DiffuseFactor", "Number", "", "A").Double(1.0);
    objects.Connect(material.id, mesh);
}

// The vertices of a joint all move with it alone. `vertices` may be empty.
void AddCluster(FbxObjects& objects, std::string_view name, const FbxPlaced& joint,
                const std::vector<std::int32_t>& vertices, std::int64_t skin) {
    const FbxObjects::Object cluster = objects.Add("Deformer", "SubDeformer", name, "Cluster");
    cluster.node.AddInt("Version", 100);
    cluster.node.Add("UserData").Text("").Text("");
    if (!vertices.empty()) {
        AddNumbers(cluster.node, "Indexes", vertices);
        AddNumbers(cluster.node, "Weights", std::vector<double>(vertices.size(), 1.0));
    }
    // The mesh is at the origin, so its transform as seen from the joint is the inverse one.
    const auto mesh = FbxMatrixOf(headless::Inverse(joint.global));
    const auto link = FbxMatrixOf(joint.global);
    cluster.node.Add("Transform").Numbers(std::span<const double>(mesh));
    cluster.node.Add("TransformLink").Numbers(std::span<const double>(link));
    objects.Connect(cluster.id, skin);
    objects.Connect(joint.id, cluster.id);
}

void AddSkin(FbxObjects& objects, const std::string& name, const ExportedMotion& pose,
             std::span<const FbxPlaced> joints, const BodyMesh& body, std::int64_t geometry) {
    const FbxObjects::Object skin = objects.Add("Deformer", "Deformer", name, "Skin");
    skin.node.AddInt("Version", 101);
    skin.node.Add("Link_DeformAcuracy").Double(50.0);
    objects.Connect(skin.id, geometry);
    std::vector<std::vector<std::int32_t>> vertices(joints.size());
    for (std::size_t vertex = 0; vertex < body.joints.size(); ++vertex)
        vertices[body.joints[vertex][0]].push_back(static_cast<std::int32_t>(vertex));
    for (std::size_t joint = 0; joint < joints.size(); ++joint)
        AddCluster(objects, text::EncodeUtf8(pose.Joints()[joint].name), joints[joint],
                   vertices[joint], skin.id);
}

}  // namespace

void AddFbxBody(FbxObjects& objects, const std::string& name, const ExportedMotion& pose,
                std::vector<FbxPlaced>& placed, Notes& notes) {
    const std::span<const FbxPlaced> joints = std::span(placed).subspan(1);
    if (joints.size() > kMostBodyJoints) {
        notes.push_back(name + ": too many joints for a mesh, only the skeleton is written");
        return;
    }
    std::vector<Transform> globals;
    for (const FbxPlaced& joint : joints)
        globals.push_back(joint.global);
    const BodyMesh body = BuildBody(pose.Joints(), globals);
    if (body.positions.empty()) return;
    const std::string bodyName = name + "_Body";
    const std::int64_t mesh = AddFbxModel(objects, bodyName, "Mesh", 0, {});
    const std::int64_t geometry = AddGeometry(objects, bodyName, body, mesh);
    AddMaterial(objects, bodyName, mesh);
    AddSkin(objects, bodyName, pose, joints, body, geometry);
    placed.push_back({mesh, Transform()});
}

}  // namespace exporters
