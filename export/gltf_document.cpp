#include "export/gltf_document.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "export/motion_facts.h"
#include "export/provenance.h"
#include "export/quaternion.h"
#include "export/single.h"
#include "export/timeline.h"
#include "headless/text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;
using nlohmann::json;

// glTF stores matrices for column vectors, column by column. A Transform is a matrix for row
// vectors and is stored row by row. The numbers therefore have the same order in both.
std::array<float, 16> MatrixOf(const Transform& transform) {
    std::array<float, 16> matrix{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            matrix[4 * row + column] = Single(transform.axes[row][column]);
        matrix[12 + row] = Single(transform.origin[row]);
    }
    matrix[15] = 1.0F;
    return matrix;
}

json RotationJson(const Transform& transform) {
    const Quaternion q = QuaternionOf(transform.axes);
    return {q.x, q.y, q.z, q.w};
}

void PutTransform(json& node, const Transform& transform) {
    const double* origin = transform.origin;
    for (int axis = 0; axis < 3; ++axis)
        RequireSingle(origin[axis]);
    if (origin[0] != 0.0 || origin[1] != 0.0 || origin[2] != 0.0)
        node["translation"] = {origin[0], origin[1], origin[2]};
    const json rotation = RotationJson(transform);
    if (rotation != json{0.0, 0.0, 0.0, 1.0}) node["rotation"] = rotation;
}

json AssetJson(const Options& options) {
    json asset = {{"version", "2.0"}, {"extras", ProvenanceJson(options)}};
    if (!options.source.tool.empty()) asset["generator"] = options.source.tool;
    return asset;
}

// Returns the name of a file as a URI. All bytes except ASCII letters, digits and "-._~" become
// %XX.
std::string UriOf(std::string_view name) {
    static constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string uri;
    for (const char character : name) {
        if (kPlain.find(character) != std::string_view::npos) {
            uri += character;
            continue;
        }
        const auto code = static_cast<unsigned char>(character);
        uri += '%';
        uri += kDigits[code >> 4];
        uri += kDigits[code & 15];
    }
    return uri;
}

// Whether two motions can be in one animation: their rates and their first frames are the same. The
// rates of models from one file may differ in their last digits.
bool SameTimes(const GltfMotion& a, const GltfMotion& b) {
    return a.firstFrame == b.firstFrame &&
           std::abs(a.secondsPerFrame - b.secondsPerFrame) <= 1e-9 * a.secondsPerFrame;
}

json Bounds(const std::vector<std::array<float, 3>>& positions) {
    auto least = positions.front();
    auto most = least;
    for (const auto& position : positions) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], position[axis]);
            most[axis] = std::max(most[axis], position[axis]);
        }
    }
    return {{"min", least}, {"max", most}};
}

}  // namespace

GltfDocument::GltfDocument(const headless::Scene& scene, const Options& options,
                           const Progress& progress)
    : scene_(scene), options_(options) {
    const std::vector<ExportedModel> models = ExportedModels(scene, options);
    std::vector<ExportedMotion> poses;
    poses.reserve(models.size());
    for (const ExportedModel& model : models) {
        names_.Add(text::EncodeUtf8(headless::View(model.object->name)));
        for (const Joint& joint : poses.emplace_back(scene, model, options).Joints())
            names_.Add(text::EncodeUtf8(joint.name));
    }
    for (const ExportedModel& model : models)
        AddModel(model, poses[model.index], progress.Part(model.index, models.size()));
    AddAnimations();
    buffer_.Finish();
}

void GltfDocument::PutName(json& node, const std::string& name) const {
    node["name"] = name;
    if (names_.IsChanged(name)) node["extras"] = {{"name", name}};
}

void GltfDocument::AddModel(const ExportedModel& model, const ExportedMotion& pose,
                            const Progress& progress) {
    Model& parts = models_.emplace_back();
    parts.holder = nodes_.Count();
    const std::string name = text::EncodeUtf8(headless::View(model.object->name));

    const std::vector<Joint>& joints = pose.Joints();
    std::vector<Transform> globals(joints.size());
    pose.BaseLocals(globals);
    pose.TurnTopJoints(globals);
    ComputeGlobals(joints, globals, globals);
    parts.frames.emplace(joints, globals, pose.Turn(), options_.aim);
    parts.frames->ApplyToGlobals(globals);
    AddNodes(*model.object, pose, parts);
    roots_.Add(parts.holder);
    if (!joints.empty()) {
        for (const Transform& global : globals)
            parts.inverseBinds.push_back(MatrixOf(headless::Inverse(global)));
        const std::size_t skin = AddSkin(name, parts.holder);
        if (options_.mesh && joints.size() > kMostBodyJoints)
            notes_.push_back(name + ": too many joints for a mesh, only the skeleton is written");
        else if (options_.mesh) {
            parts.body = BuildBody(joints, globals);
            AddBody(name, skin, parts);
        }
    }
    AddMotions(model, parts, progress);
}

void GltfDocument::AddNodes(const Object& model, const ExportedMotion& pose, const Model& parts) {
    const std::vector<Joint>& joints = pose.Joints();
    const std::size_t first = nodes_.Count() + 1;  // the holder comes before the joints
    std::vector<Transform> locals(joints.size());
    pose.BaseLocals(locals);
    parts.frames->ApplyToLocals(locals);

    std::vector<std::vector<std::size_t>> children(joints.size());
    std::vector<std::size_t> top;
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        const std::size_t parent = joints[joint].parent;
        (parent == Joint::kNoParent ? top : children[parent]).push_back(first + joint);
    }
    json holder = json::object();
    PutName(holder, text::EncodeUtf8(headless::View(model.name)));
    if (!top.empty()) holder["children"] = top;
    PutTransform(holder, parts.frames->Holder());
    nodes_.Add(holder);
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        json node = json::object();
        PutName(node, text::EncodeUtf8(joints[joint].name));
        PutTransform(node, locals[joint]);
        if (!children[joint].empty()) node["children"] = children[joint];
        nodes_.Add(node);
    }
}

std::size_t GltfDocument::AddSkin(const std::string& name, std::size_t holder) {
    const Model& parts = models_.back();
    buffer_.BeginView(GltfTarget::None);
    const std::size_t binds =
        buffer_.Add(std::span(parts.inverseBinds), GltfComponent::Float, "MAT4", json::object());
    std::vector<std::size_t> joints(parts.inverseBinds.size());
    for (std::size_t joint = 0; joint < joints.size(); ++joint)
        joints[joint] = holder + 1 + joint;
    // The skin does not name the holder as its "skeleton": some viewers then read the inverse bind
    // matrices as relative to that node, though glTF defines them relative to the scene.
    return skins_.Add({{"name", name}, {"joints", joints}, {"inverseBindMatrices", binds}});
}

// The node of the mesh is a root node. A parent would have no effect, because glTF ignores the
// transform of a node with a skinned mesh.
void GltfDocument::AddBody(const std::string& name, std::size_t skin, Model& parts) {
    const BodyMesh& body = parts.body;
    if (body.positions.empty()) return;
    parts.weights.assign(body.positions.size(), {255, 0, 0, 0});
    const auto vertices = [&](const auto& list, GltfComponent component, const char* type,
                              const json& more) {
        buffer_.BeginView(GltfTarget::Vertices);
        return buffer_.Add(std::span(list), component, type, more);
    };
    const json attributes = {
        {"POSITION",
         vertices(body.positions, GltfComponent::Float, "VEC3", Bounds(body.positions))},
        {"NORMAL", vertices(body.normals, GltfComponent::Float, "VEC3", json::object())},
        {"JOINTS_0", vertices(body.joints, GltfComponent::UnsignedShort, "VEC4", json::object())},
        {"WEIGHTS_0",
         vertices(parts.weights, GltfComponent::UnsignedByte, "VEC4", {{"normalized", true}})}};
    buffer_.BeginView(GltfTarget::Indices);
    const std::size_t indices =
        buffer_.Add(std::span(body.indices), GltfComponent::UnsignedInt, "SCALAR", json::object());
    const json primitive = {{"attributes", attributes}, {"indices", indices}, {"material", 0}};
    const std::size_t mesh = meshes_.Add({{"primitives", json::array({primitive})}});
    json node = {{"name", names_.UnusedName(name + "_Body")}, {"mesh", mesh}, {"skin", skin}};
    roots_.Add(nodes_.Count());
    nodes_.Add(node);
}

void GltfDocument::AddMotions(const ExportedModel& model, Model& parts, const Progress& progress) {
    if (MotionOf(*model.object) == nullptr) NoteNoMotion(*model.object, notes_);
    // The first action is the base pose; all others are motions.
    const auto& actions = model.object->modelData->actions;
    for (std::size_t action = 1; action < actions.size(); ++action) {
        const ExportedMotion motion(scene_, model, actions[action].get(), options_, false, notes_);
        if (motion.Motion() == nullptr || parts.inverseBinds.empty()) continue;
        parts.motions.push_back(BuildGltfMotion(scene_, *model.object, motion, *parts.frames,
                                                progress.Part(action - 1, actions.size() - 1)));
    }
}

void GltfDocument::AddAnimations() {
    std::vector<AnimatedModel> all;
    bool areTogether = !options_.animationPerModel;
    for (const Model& model : models_) {
        areTogether = areTogether && model.motions.size() <= 1;
        for (const GltfMotion& motion : model.motions)
            all.push_back({&motion, model.holder});
    }
    if (all.empty()) return;
    const auto fits = [&](const AnimatedModel& model) {
        return SameTimes(*model.motion, *all.front().motion);
    };
    if (areTogether && std::all_of(all.begin(), all.end(), fits)) return AddAnimation(all);
    for (const AnimatedModel& model : all)
        AddAnimation({&model, 1});
}

void GltfDocument::AddChannels(const GltfMotion& motion, std::size_t holder, JsonList& samplers,
                               JsonList& channels) {
    buffer_.BeginView(GltfTarget::None);
    const std::size_t times = buffer_.Add(std::span(motion.times), GltfComponent::Float, "SCALAR",
                                          {{"min", json::array({motion.times.front()})},
                                           {"max", json::array({motion.times.back()})}});
    const auto add = [&](std::size_t node, const char* path, const char* type, const auto& values) {
        if (values.empty()) return;
        const std::size_t output =
            buffer_.Add(std::span(values), GltfComponent::Float, type, json::object());
        const std::size_t sampler = samplers.Add({{"input", times}, {"output", output}});
        channels.Add({{"sampler", sampler}, {"target", {{"node", node}, {"path", path}}}});
    };
    for (std::size_t joint = 0; joint < motion.rotations.size(); ++joint) {
        const std::size_t node = holder + 1 + joint;
        add(node, "rotation", "VEC4", motion.rotations[joint].Values());
        add(node, "translation", "VEC3", motion.translations[joint].Values());
    }
}

void GltfDocument::AddAnimation(std::span<const AnimatedModel> models) {
    JsonList samplers;
    JsonList channels;
    for (const AnimatedModel& model : models)
        AddChannels(*model.motion, model.holder, samplers, channels);
    const GltfMotion& motion = *models.front().motion;
    json extras = {{"firstFrame", motion.firstFrame}, {"framesPerSecond", motion.framesPerSecond}};
    if (motion.sourceSecondsPerFrame > 0.0)
        extras["sourceFramesPerSecond"] = 1.0 / motion.sourceSecondsPerFrame;
    animations_.AddText("{\"name\":" + json(motion.name).dump() +
                        ",\"samplers\":" + samplers.Text() + ",\"channels\":" + channels.Text() +
                        R"(,"extras":)" + extras.dump() + "}");
}

std::string GltfDocument::Json(std::string_view bufferName) const {
    std::string text = "{\"asset\":" + AssetJson(options_).dump() +
                       R"(,"scene":0,"scenes":[{"nodes":)" + roots_.Text() + "}]";
    const auto put = [&](const char* name, const JsonList& list) {
        if (!list.IsEmpty()) text += ",\"" + std::string(name) + "\":" + list.Text();
    };
    put("nodes", nodes_);
    put("skins", skins_);
    put("meshes", meshes_);
    if (!meshes_.IsEmpty()) {
        const json material = {{"name", "Body"},
                               {"pbrMetallicRoughness",
                                {{"baseColorFactor", {0.55, 0.68, 0.85, 1.0}},
                                 {"metallicFactor", 0.0},
                                 {"roughnessFactor", 0.7}}}};
        text += ",\"materials\":[" + material.dump() + "]";
    }
    put("animations", animations_);
    put("accessors", buffer_.Accessors());
    put("bufferViews", buffer_.Views());
    if (buffer_.ByteLength() > 0) {
        json buffer = {{"byteLength", buffer_.ByteLength()}};
        if (!bufferName.empty()) buffer["uri"] = UriOf(bufferName);
        text += ",\"buffers\":[" + buffer.dump() + "]";
    }
    return text + "}";
}

}  // namespace exporters
