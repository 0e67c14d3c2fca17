// Collects the objects of an FBX file and the connections between them.
// Internal to export/.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "export/fbx_node.h"
#include "headless/transform.h"

namespace exporters {

// Appends an entry to a node "Properties70". The caller appends the values to the entry. `flags` is
// "A" for a property that curves may drive, and empty otherwise.
FbxNode& AddFbxProperty(FbxNode& properties, std::string_view name, std::string_view type,
                        std::string_view label = "", std::string_view flags = "");
void AddFbxVector(FbxNode& properties, std::string_view name, std::string_view type,
                  std::string_view flags, const std::array<double, 3>& value);
void AddFbxTime(FbxNode& properties, std::string_view name, std::int64_t time);

// Returns the matrix as FBX stores it, for an array property.
std::array<double, 16> FbxMatrixOf(const headless::Transform& transform);

class FbxObjects {
  public:
    // Keeps references to both nodes.
    FbxObjects(FbxNode& objects, FbxNode& connections)
        : objects_(objects), connections_(connections) {}

    struct Object {
        std::int64_t id = 0;
        FbxNode& node;
    };
    // Adds an object. `type` is the name of its node, such as "Model". `kind` is the name of its
    // class, which often is the type. `variant` tells objects of a type apart, such as "LimbNode".
    Object Add(std::string_view type, std::string_view kind, std::string_view name,
               std::string_view variant);
    // Connects an object to the one to which it belongs. The id 0 is that of the scene.
    void Connect(std::int64_t object, std::int64_t owner);
    // Connects an object to a property of another one.
    void Connect(std::int64_t object, std::int64_t owner, std::string_view property);
    // The number of objects of each type.
    const std::map<std::string, std::int32_t>& Counts() const { return counts_; }

  private:
    FbxNode& objects_;
    FbxNode& connections_;
    std::int64_t last_ = 0;  // the id that was given last
    std::map<std::string, std::int32_t> counts_;
};

// Adds an object that has a place in the scene, and returns its id. `local` is its position and its
// angles in degrees (x turns first), as seen from its owner.
std::int64_t AddFbxModel(FbxObjects& objects, std::string_view name, std::string_view variant,
                         std::int64_t owner, const std::array<double, 6>& local);

}  // namespace exporters
