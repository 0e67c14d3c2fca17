// Reads the JSON and the buffer of a .glb file, and the values in them.
#pragma once

#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "headless/transform.h"

namespace exported {

struct Glb {
    nlohmann::json json;
    std::string binary;

    explicit Glb(const std::string& bytes) {
        const auto word = [&](std::size_t at) {
            std::uint32_t value = 0;
            std::memcpy(&value, bytes.data() + at, sizeof(value));
            return std::size_t{value};
        };
        json = nlohmann::json::parse(bytes.substr(20, word(12)));
        if (20 + word(12) < bytes.size()) binary = bytes.substr(28 + word(12));
    }

    // The values of an accessor.
    std::vector<float> Floats(std::size_t accessor) const {
        const nlohmann::json& about = json["accessors"][accessor];
        const nlohmann::json& view = json["bufferViews"][about["bufferView"].get<std::size_t>()];
        const std::string type = about["type"];
        const std::size_t width = type == "SCALAR" ? 1
                                  : type == "MAT4" ? 16
                                  : type == "VEC3" ? 3
                                                   : 4;
        std::vector<float> values(about["count"].get<std::size_t>() * width);
        const std::size_t start =
            view.value("byteOffset", std::size_t{0}) + about.value("byteOffset", std::size_t{0});
        std::memcpy(values.data(), binary.data() + start, values.size() * sizeof(float));
        return values;
    }

    // The node with this name. Throws std::out_of_range if there is none.
    const nlohmann::json& Node(const std::string& name) const {
        for (const nlohmann::json& node : json["nodes"])
            if (node["name"] == name) return node;
        throw std::out_of_range(name);
    }

    // The values of the channel that drives the property `path` of the node with this name. Empty
    // if there is none.
    std::vector<float> Track(const std::string& name, const std::string& path) const {
        for (const nlohmann::json& animation : json["animations"])
            for (const nlohmann::json& channel : animation["channels"]) {
                const nlohmann::json& target = channel["target"];
                if (json["nodes"][target["node"].get<std::size_t>()]["name"] != name) continue;
                if (target["path"] != path) continue;
                const std::size_t sampler = channel["sampler"];
                return Floats(animation["samplers"][sampler]["output"]);
            }
        return {};
    }

    // The times, in seconds, of the first animation.
    std::vector<float> Times() const {
        return Floats(json["animations"][0]["samplers"][0]["input"].get<std::size_t>());
    }
};

}  // namespace exported
