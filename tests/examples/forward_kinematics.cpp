#include "tests/examples/forward_kinematics.h"

#include <cstddef>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/support/files.h"

namespace examples_test {
namespace {

// The product of rotations about `axes`, letters of "xyz". The first one acts first.
Matrix3 TurnsXyz(const std::string& axes, const double* degrees) {
    Matrix3 turns = support::kIdentity3;
    for (std::size_t i = 0; i < axes.size(); ++i)
        turns = support::ColumnRotation(axes[i], support::Radians(degrees[i])) * turns;
    return turns;
}

// Tokens of a text, read one after another.
class Tokens {
  public:
    explicit Tokens(const std::string& text) : stream_(text) {
        stream_.imbue(std::locale::classic());
    }

    bool Next(std::string& token) { return static_cast<bool>(stream_ >> token); }
    std::string Word() {
        std::string token;
        if (!Next(token)) throw std::runtime_error("the file ends too early");
        return token;
    }
    void Expect(const std::string& wanted) {
        if (const std::string token = Word(); token != wanted)
            throw std::runtime_error("expected " + wanted + ", found " + token);
    }
    double Number() {
        double value = 0;
        if (!(stream_ >> value)) throw std::runtime_error("expected a number");
        return value;
    }
    Vec3 ThreeNumbers() {
        const double x = Number();
        const double y = Number();
        return {x, y, Number()};
    }

  private:
    std::istringstream stream_;
};

struct BvhNode {
    std::string name;
    int parent = -1;
    Vec3 offset{};
    std::vector<std::string> channels;
};

// Reads up to and including "MOTION".
std::vector<BvhNode> ReadHierarchy(Tokens& tokens) {
    std::vector<BvhNode> nodes;
    int open = -1;
    tokens.Expect("HIERARCHY");
    for (std::string token = tokens.Word(); token != "MOTION"; token = tokens.Word()) {
        if (token == "}") {
            open = nodes.at(static_cast<std::size_t>(open)).parent;
        } else if (token == "ROOT" || token == "JOINT" || token == "End") {
            BvhNode node;
            node.name = tokens.Word();
            if (token == "End") node.name = nodes.at(static_cast<std::size_t>(open)).name + "_End";
            node.parent = open;
            tokens.Expect("{");
            tokens.Expect("OFFSET");
            node.offset = tokens.ThreeNumbers();
            nodes.push_back(node);
            open = static_cast<int>(nodes.size()) - 1;
        } else if (token == "CHANNELS") {
            const auto count = static_cast<std::size_t>(tokens.Number());
            for (std::size_t i = 0; i < count; ++i)
                nodes.back().channels.push_back(tokens.Word());
        } else {
            throw std::runtime_error("unknown token " + token);
        }
    }
    return nodes;
}

void PlaceBvhFrame(const std::vector<BvhNode>& nodes, const std::vector<double>& row, Walk& walk) {
    std::vector<Joint> joints;
    std::size_t value = 0;
    for (const BvhNode& node : nodes) {
        Vec3 offset = node.offset;
        Matrix3 local = support::kIdentity3;
        for (const std::string& channel : node.channels) {
            const char axis = static_cast<char>(channel[0] - 'X' + 'x');
            if (channel.substr(1) == "rotation")
                local = local * support::ColumnRotation(axis, support::Radians(row[value]));
            else
                offset[static_cast<std::size_t>(axis - 'x')] = row[value];
            ++value;
        }
        if (node.parent < 0) {
            joints.push_back({offset, local});
        } else {
            const Joint& parent = joints[static_cast<std::size_t>(node.parent)];
            joints.push_back({Add(parent.position, parent.axes * offset), parent.axes * local});
        }
        walk[node.name].push_back(joints.back());
    }
}

std::string WithoutComments(const std::string& text, const std::string& blanks) {
    std::istringstream lines(text);
    std::string out;
    for (std::string line; std::getline(lines, line); out += '\n')
        if (!line.starts_with('#')) out += line;
    for (char& c : out)
        if (blanks.find(c) != std::string::npos) c = ' ';
    return out;
}

std::pair<std::string, AsfBone> ReadBone(Tokens& tokens) {
    std::string name;
    AsfBone bone;
    for (std::string word = tokens.Word(); word != "end"; word = tokens.Word()) {
        if (word == "id") {
            tokens.Number();
        } else if (word == "name") {
            name = tokens.Word();
        } else if (word == "direction") {
            bone.direction = tokens.ThreeNumbers();
        } else if (word == "length") {
            bone.length = tokens.Number();
        } else if (word == "axis") {
            bone.axis = tokens.ThreeNumbers();
            tokens.Expect("XYZ");
        } else if (word == "dof") {
            for (word = tokens.Word(); word != "limits"; word = tokens.Word())
                bone.dof += word.at(1);
            for (std::size_t i = 0; i < bone.dof.size(); ++i) {
                const double low = tokens.Number();
                bone.limits.push_back({low, tokens.Number()});
            }
        } else {
            throw std::runtime_error("unknown token " + word);
        }
    }
    return {name, bone};
}

// Reads from after ":bonedata" up to and including ":hierarchy".
void ReadBones(Tokens& tokens, AcclaimWalk& out) {
    std::string word = tokens.Word();
    for (; word == "begin"; word = tokens.Word())
        out.bones.insert(ReadBone(tokens));
    if (word != ":hierarchy") throw std::runtime_error("expected :hierarchy");
}

// Reads the lines after ":hierarchy". Returns the bones in the order of the lines, parents first.
std::vector<std::string> ReadAsfHierarchy(const std::string& text, AcclaimWalk& out) {
    std::istringstream lines(text.substr(text.find(":hierarchy")));
    std::vector<std::string> order;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string parent;
        words >> parent;
        for (std::string child; words >> child;) {
            out.bones.at(child).parent = parent;
            order.push_back(child);
        }
    }
    return order;
}

void ReadMotion(const std::string& text, AcclaimWalk& out) {
    std::istringstream lines(WithoutComments(text, ""));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        words.imbue(std::locale::classic());
        std::string name;
        if (!(words >> name)) continue;
        if (name == ":SAMPLES-PER-SECOND") words >> out.samplesPerSecond;
        if (name.starts_with(':')) continue;
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            if (std::stoul(name) != out.rows.size() + 1)
                throw std::runtime_error("a frame is missing");
            out.rows.emplace_back();
            continue;
        }
        std::vector<double>& values = out.rows.back()[name];
        for (double value = 0; words >> value;)
            values.push_back(value);
    }
}

// The rotation of a bone relative to its parent is C * M * C^-1, where C is the frame of its axis
// and M its motion. The bone starts at the end of its parent.
void PlaceAcclaimFrame(AcclaimWalk& out, const std::vector<std::string>& order, std::size_t frame) {
    const auto& row = out.rows[frame];
    const std::vector<double>& root = row.at("root");
    out.walk["root"].push_back({{root[0], root[1], root[2]}, TurnsXyz("xyz", &root[3])});
    const auto end = [&](const std::string& name) {
        const Joint& start = out.walk.at(name)[frame];
        const auto bone = out.bones.find(name);
        if (bone == out.bones.end()) return start.position;
        const double length = bone->second.length * out.lengthFactor;
        return Add(start.position, start.axes * support::Scale(bone->second.direction, length));
    };
    for (const std::string& name : order) {
        const AsfBone& bone = out.bones.at(name);
        const Matrix3 axis = TurnsXyz("xyz", bone.axis.data());
        const auto values = row.find(name);
        const Matrix3 motion =
            values == row.end() ? support::kIdentity3 : TurnsXyz(bone.dof, values->second.data());
        const Matrix3 local = axis * motion * Transposed(axis);
        out.walk[name].push_back({end(bone.parent), out.walk.at(bone.parent)[frame].axes * local});
    }
    for (const std::string& name : order)
        out.walk[name + "_End"].push_back({end(name), out.walk.at(name)[frame].axes});
}

}  // namespace

BvhWalk ReadBvh(const std::string& path) {
    Tokens tokens(support::ReadText(path));
    BvhWalk out;
    const std::vector<BvhNode> nodes = ReadHierarchy(tokens);
    std::size_t channels = 0;
    for (const BvhNode& node : nodes) {
        channels += node.channels.size();
        out.offsets[node.name] = node.offset;
    }
    tokens.Expect("Frames:");
    out.rows.resize(static_cast<std::size_t>(tokens.Number()));
    tokens.Expect("Frame");
    tokens.Expect("Time:");
    out.frameSeconds = tokens.Number();
    for (std::vector<double>& row : out.rows) {
        for (std::size_t i = 0; i < channels; ++i)
            row.push_back(tokens.Number());
        PlaceBvhFrame(nodes, row, out.walk);
    }
    if (std::string more; tokens.Next(more)) throw std::runtime_error("more values than frames");
    return out;
}

AcclaimWalk ReadAcclaim(const std::string& asfPath, const std::string& amcPath) {
    AcclaimWalk out;
    const std::string asf = WithoutComments(support::ReadText(asfPath), "(),");
    Tokens tokens(asf);
    tokens.Expect(":version");
    for (std::string word = tokens.Word(); word != ":bonedata"; word = tokens.Word())
        if (word == "length" && out.lengthFactor == 0) out.lengthFactor = tokens.Number();
    ReadBones(tokens, out);
    std::vector<std::string> order = ReadAsfHierarchy(asf, out);
    ReadMotion(support::ReadText(amcPath), out);
    for (std::size_t frame = 0; frame < out.rows.size(); ++frame)
        PlaceAcclaimFrame(out, order, frame);
    return out;
}

}  // namespace examples_test
