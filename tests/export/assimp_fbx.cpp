// assimp_fbx FOLDER: Assimp reads every .fbx file that fbx_cases.py wrote. Joints, their parents,
// their positions and rotations at the keys, the bind pose, the body, the unit, the axes, the rate
// and the names must be as NAME.json says, and Assimp must not complain.
#include <algorithm>
#include <array>
#include <assimp/DefaultLogger.hpp>
#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/scene.h>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using Point = std::array<double, 3>;

// Assimp says this of every file of version 7.5, and reads it.
constexpr const char* kNewerVersion = "unsupported, newer format version";
constexpr double kRotationBound = 1e-4;  // radians; Assimp has 32-bit numbers

struct Wrong : std::runtime_error {
    using std::runtime_error::runtime_error;
};

void Require(bool condition, const std::string& message) {
    if (!condition) throw Wrong(message);
}

// Keeps what Assimp complains about.
class Complaints : public Assimp::LogStream {
  public:
    explicit Complaints(std::vector<std::string>& lines) : lines_(lines) {}
    void write(const char* line) override { lines_.emplace_back(line); }

  private:
    std::vector<std::string>& lines_;
};

struct Model {
    const json& expected;
    const aiNode* node;
    std::vector<const aiNode*> joints;
    const aiAnimation* motion;
    std::map<const aiNode*, const aiNodeAnim*> channels;
};

Point PositionOf(const aiMatrix4x4& matrix) {
    return {matrix.a4, matrix.b4, matrix.c4};
}

double Distance(const Point& a, const json& b) {
    return std::hypot(a[0] - b[0].get<double>(), a[1] - b[1].get<double>(),
                      a[2] - b[2].get<double>());
}

const aiNode* ChildOf(const aiNode& node, const std::string& name) {
    for (unsigned index = 0; index < node.mNumChildren; ++index)
        if (node.mChildren[index]->mName.C_Str() == name) return node.mChildren[index];
    return nullptr;
}

std::size_t CountNodes(const aiNode& node) {
    std::size_t count = 1;
    for (unsigned index = 0; index < node.mNumChildren; ++index)
        count += CountNodes(*node.mChildren[index]);
    return count;
}

std::vector<const aiNode*> JointsOf(const aiNode& node, const json& expected) {
    std::vector<const aiNode*> joints;
    for (std::size_t index = 0; index < expected["joints"].size(); ++index) {
        const int parent = expected["parents"][index];
        const aiNode& above = parent < 0 ? node : *joints[static_cast<std::size_t>(parent)];
        const std::string name = expected["joints"][index];
        joints.push_back(ChildOf(above, name));
        Require(joints.back() != nullptr, "no joint " + name + " under " + above.mName.C_Str());
    }
    return joints;
}

const aiAnimation* MotionOf(const aiScene& scene, const json& name) {
    for (unsigned index = 0; index < scene.mNumAnimations; ++index)
        if (name == scene.mAnimations[index]->mName.C_Str()) return scene.mAnimations[index];
    return nullptr;
}

template <class Key>
Key KeyAt(const Key* keys, unsigned count, double ticks) {
    const Key* nearest = std::min_element(keys, keys + count, [&](const Key& a, const Key& b) {
        return std::abs(a.mTime - ticks) < std::abs(b.mTime - ticks);
    });
    // A channel that never changes needs no key at each time.
    const bool isStill = count <= 2 && keys[0].mValue == keys[count - 1].mValue;
    Require(isStill || std::abs(nearest->mTime - ticks) < 1e-3,
            "there is no key at " + std::to_string(ticks));
    return *nearest;
}

aiMatrix4x4 LocalAt(const Model& model, const aiNode* node, double ticks) {
    const auto found = model.channels.find(node);
    if (found == model.channels.end()) return node->mTransformation;
    const aiNodeAnim& channel = *found->second;
    aiVector3D scaling;
    aiVector3D position;
    aiQuaternion rotation;
    node->mTransformation.Decompose(scaling, rotation, position);
    if (channel.mNumPositionKeys > 0)
        position = KeyAt(channel.mPositionKeys, channel.mNumPositionKeys, ticks).mValue;
    if (channel.mNumRotationKeys > 0)
        rotation = KeyAt(channel.mRotationKeys, channel.mNumRotationKeys, ticks).mValue;
    return {aiVector3D(1, 1, 1), rotation, position};
}

aiMatrix4x4 GlobalAt(const Model& model, const aiNode* node, double ticks) {
    aiMatrix4x4 global;
    for (; node; node = node->mParent)
        global = LocalAt(model, node, ticks) * global;
    return global;
}

double AngleBetween(const aiMatrix4x4& matrix, const json& expected) {
    aiVector3D scaling;
    aiVector3D position;
    aiQuaternion found;
    matrix.Decompose(scaling, found, position);
    const double values[4] = {found.x, found.y, found.z, found.w};
    double product = 0.0;
    for (std::size_t index = 0; index < 4; ++index)
        product += values[index] * expected[index].get<double>();
    double squares = 0.0;
    for (std::size_t index = 0; index < 4; ++index)
        squares += std::pow(values[index] - std::copysign(expected[index].get<double>(),
                                                          expected[index].get<double>() * product),
                            2);
    return 2.0 * std::sqrt(squares);
}

// The greatest distance of a joint, as a part of the bound.
double CompareMoment(const Model& model, const json& moment) {
    const double bound = model.expected["bound"];
    const double seconds = moment["time"];
    const double ticks = model.motion ? seconds * model.motion->mTicksPerSecond : 0.0;
    double most = 0.0;
    for (std::size_t index = 0; index < model.joints.size(); ++index) {
        const aiMatrix4x4 global = GlobalAt(model, model.joints[index], ticks);
        const std::string where =
            model.joints[index]->mName.C_Str() + (" at " + std::to_string(seconds) + " s");
        const double away = Distance(PositionOf(global), moment["positions"][index]);
        Require(away <= bound, where + " is " +
                                   std::to_string(away / model.expected["size"].get<double>()) +
                                   " of the size away");
        const double turned = AngleBetween(global, moment["quaternions"][index]);
        Require(turned <= kRotationBound, where + " is turned by " + std::to_string(turned));
        most = std::max(most, away / bound);
    }
    return most;
}

std::map<const aiNode*, const aiNodeAnim*> ChannelsOf(const Model& model) {
    std::map<std::string, const aiNodeAnim*> byName;
    for (unsigned index = 0; index < model.motion->mNumChannels; ++index)
        byName[model.motion->mChannels[index]->mNodeName.C_Str()] = model.motion->mChannels[index];
    std::map<const aiNode*, const aiNodeAnim*> channels;
    for (const aiNode* joint : model.joints) {
        const auto found = byName.find(joint->mName.C_Str());
        if (found != byName.end()) channels[joint] = found->second;
    }
    Require(channels.size() == byName.size(), "a node that is no joint moves");
    return channels;
}

void CheckMotion(const Model& model, double fps) {
    const aiAnimation& motion = *model.motion;
    const double seconds = model.expected["seconds"];
    double lastKey = 0.0;
    Require(std::abs(motion.mTicksPerSecond / fps - 1.0) < 1e-6,
            "the rate is " + std::to_string(motion.mTicksPerSecond));
    for (const auto& [node, channel] : model.channels) {
        // A joint that does not move has one or two keys. Assimp adds keys where an angle takes a
        // large step.
        const unsigned keys = channel->mNumRotationKeys;
        Require(keys <= 2 || keys >= model.expected["keys"].get<unsigned>(),
                node->mName.C_Str() + (" has " + std::to_string(keys) + " keys"));
        lastKey = std::max(lastKey, channel->mRotationKeys[keys - 1].mTime);
    }
    if (lastKey > 0.0)
        Require(std::abs(lastKey / fps - seconds) <= 1e-6 * (seconds + 1.0 / fps),
                "the motion takes " + std::to_string(lastKey / fps) + " s");
}

// Every joint is bound where it is in the base pose, and each vertex has one joint.
void CheckBody(const aiScene& scene, const Model& model) {
    const json& expected = model.expected;
    const aiNode* body =
        ChildOf(*scene.mRootNode, model.node->mName.C_Str() + std::string("_Body"));
    Require(body && body->mNumMeshes == 1, "no body");
    const aiMesh& mesh = *scene.mMeshes[body->mMeshes[0]];
    const aiMatrix4x4 place = GlobalAt(model, body, 0.0);
    Require(mesh.mNumBones == model.joints.size(),
            std::to_string(mesh.mNumBones) + " bones move the body");
    std::vector<double> weights(mesh.mNumVertices);
    for (unsigned number = 0; number < mesh.mNumBones; ++number) {
        const aiBone& bone = *mesh.mBones[number];
        const auto joint =
            std::find_if(model.joints.begin(), model.joints.end(),
                         [&](const aiNode* node) { return node->mName == bone.mName; });
        Require(joint != model.joints.end(),
                std::string("no joint for the bone ") + bone.mName.C_Str());
        if (!expected["rest"].is_null()) {
            const Point bound = PositionOf(place * aiMatrix4x4(bone.mOffsetMatrix).Inverse());
            const auto index = static_cast<std::size_t>(joint - model.joints.begin());
            Require(Distance(bound, expected["rest"][index]) <= expected["bound"].get<double>(),
                    std::string(bone.mName.C_Str()) + " is bound elsewhere");
        }
        for (unsigned weight = 0; weight < bone.mNumWeights; ++weight)
            weights[bone.mWeights[weight].mVertexId] += bone.mWeights[weight].mWeight;
    }
    Require(
        std::all_of(weights.begin(), weights.end(), [](double weight) { return weight == 1.0; }),
        "weights of a vertex are not 1");
}

double CheckModel(const aiScene& scene, const json& expected, const json& file) {
    const aiNode* node = ChildOf(*scene.mRootNode, expected["name"]);
    Require(node != nullptr, "no model " + expected["name"].get<std::string>());
    Model model{expected, node, JointsOf(*node, expected), nullptr, {}};
    Require(CountNodes(*node) == model.joints.size() + 1, "the model has other nodes");
    if (!expected["motion"].is_null()) model.motion = MotionOf(scene, expected["motion"]);
    if (model.motion) {
        model.channels = ChannelsOf(model);
        CheckMotion(model, file["fps"]);
    }
    if (file["mesh"]) CheckBody(scene, model);
    double most = 0.0;
    for (const json& moment : expected["moments"])
        most = std::max(most, CompareMoment(model, moment));
    return most;
}

double Number(const aiScene& scene, const char* name) {
    double value = 0.0;
    float single = 0.0F;
    std::int32_t whole = 0;
    if (scene.mMetaData->Get(name, value)) return value;
    if (scene.mMetaData->Get(name, single)) return static_cast<double>(single);
    return scene.mMetaData->Get(name, whole) ? static_cast<double>(whole) : std::nan("");
}

void CheckSettings(const aiScene& scene, const json& file) {
    const double unit = file["unit"];
    const double centimetres = unit > 0.0 ? 100.0 * unit : 1.0;
    Require(std::abs(Number(scene, "UnitScaleFactor") / centimetres - 1.0) < 1e-6,
            "the unit is another");
    const std::pair<const char*, double> axes[] = {{"UpAxis", 1},    {"UpAxisSign", 1},
                                                   {"FrontAxis", 2}, {"FrontAxisSign", 1},
                                                   {"CoordAxis", 0}, {"CoordAxisSign", 1}};
    for (const auto& [name, value] : axes)
        Require(Number(scene, name) == value, std::string(name) + " is another");
}

double CheckFile(const std::filesystem::path& path, std::vector<std::string>& complaints) {
    const json file =
        json::parse(std::ifstream(std::filesystem::path(path).replace_extension(".json")));
    complaints.clear();
    Assimp::Importer importer;
    importer.SetPropertyBool(AI_CONFIG_IMPORT_REMOVE_EMPTY_BONES, false);
    const aiScene* scene = importer.ReadFile(path.string(), 0);
    Require(scene != nullptr, importer.GetErrorString());
    for (const std::string& line : complaints)
        Require(line.find(kNewerVersion) != std::string::npos, "Assimp said " + line);
    CheckSettings(*scene, file);
    double most = 0.0;
    for (const json& model : file["models"])
        most = std::max(most, CheckModel(*scene, model, file));
    return most;
}

std::vector<std::filesystem::path> FilesIn(const char* folder) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".fbx") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): an exception should end the program.
int main(int count, char** arguments) {
    if (count != 2) return 2;
    std::vector<std::string> complaints;
    Assimp::DefaultLogger::create("", Assimp::Logger::NORMAL, 0);
    Assimp::DefaultLogger::get()->attachStream(new Complaints(complaints),
                                               Assimp::Logger::Warn | Assimp::Logger::Err);
    const auto files = FilesIn(arguments[1]);
    std::size_t failed = files.empty() ? 1 : 0;
    double most = 0.0;
    for (const auto& path : files) {
        try {
            most = std::max(most, CheckFile(path, complaints));
        } catch (const std::exception& problem) {
            ++failed;
            std::printf("%s: %s\n", path.filename().c_str(), problem.what());
        }
    }
    std::printf("%zu files, %zu wrong; the greatest distance is %.3f of what is allowed\n",
                files.size(), failed, most);
    return failed ? 1 : 0;
}
