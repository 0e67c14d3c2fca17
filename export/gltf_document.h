// Builds the contents of a glTF file in memory. They are the JSON and the buffer, which holds the
// numbers of the bind poses, the meshes and the motions.
// Internal to export/.
#pragma once

#include <deque>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/body_mesh.h"
#include "export/exported_motion.h"
#include "export/gltf_buffer.h"
#include "export/gltf_frames.h"
#include "export/gltf_names.h"
#include "export/gltf_tracks.h"
#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"

namespace exporters {

class GltfDocument {
  public:
    // Keeps references to the scene and to the options. Throws ExportError if the scene cannot be
    // written as glTF, and what `progress` throws.
    GltfDocument(const headless::Scene& scene, const Options& options, const Progress& progress);

    // Returns the JSON text. `bufferName` is the name of the file that holds the buffer. It is
    // empty if one file holds both the JSON and the buffer.
    std::string Json(std::string_view bufferName) const;
    const GltfBuffer& Buffer() const { return buffer_; }
    const Notes& GetNotes() const { return notes_; }

  private:
    // The numbers of one model. buffer_ refers to them and does not copy them.
    struct Model {
        std::size_t holder = 0;            // index of the node above the joints
        std::optional<GltfFrames> frames;  // set by AddModel
        std::vector<std::array<float, 16>> inverseBinds;
        BodyMesh body;
        std::vector<std::array<std::uint8_t, 4>> weights;
        std::deque<GltfMotion> motions;
    };

    void AddModel(const ExportedModel& model, const ExportedMotion& pose, const Progress& progress);
    void AddNodes(const headless::Object& model, const ExportedMotion& pose, const Model& parts);
    // Returns the index of the new skin. `holder` is the index of the node above the joints. The
    // nodes of the joints have the indices after `holder`.
    std::size_t AddSkin(const std::string& name, std::size_t holder);
    void AddBody(const std::string& name, std::size_t skin, Model& parts);
    void AddMotions(const ExportedModel& model, Model& parts, const Progress& progress);
    // Adds one animation for the motions of all models or, if that is not possible or not wanted,
    // one for each motion.
    void AddAnimations();
    // The motions of an animation, which have the same rate and the same first frame.
    struct AnimatedModel {
        const GltfMotion* motion;
        std::size_t holder;
    };
    void AddChannels(const GltfMotion& motion, std::size_t holder, JsonList& samplers,
                     JsonList& channels);
    void AddAnimation(std::span<const AnimatedModel> models);
    // Sets the name of a node. If viewers would change the name, the node's extras repeat it.
    void PutName(nlohmann::json& node, const std::string& name) const;

    const headless::Scene& scene_;
    const Options& options_;
    Notes notes_;
    GltfNames names_;
    std::deque<Model> models_;
    GltfBuffer buffer_;
    JsonList nodes_, roots_, skins_, meshes_, animations_;
};

}  // namespace exporters
