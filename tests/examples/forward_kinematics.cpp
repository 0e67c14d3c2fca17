#include "tests/examples/forward_kinematics.h"

#include <cmath>
#include <cstddef>
#include <locale>
#include <numbers>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/support/files.h"

namespace examples_test {
namespace {

constexpr Axes kStraight{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

Axes Multiply(const Axes& a, const Axes& b) {
    Axes product{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            for (std::size_t k = 0; k < 3; ++k)
                product[i][j] += a[i][k] * b[k][j];
    return product;
}

Axes Transposed(const Axes& a) {
    Axes out{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            out[i][j] = a[j][i];
    return out;
}

// The turn about one axis, 'x', 'y' or 'z'.
Axes Turn(char axis, double degrees) {
    const double c = std::cos(degrees * std::numbers::pi / 180);
    const double s = std::sin(degrees * std::numbers::pi / 180);
    switch (axis) {
        case 'x':
            return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
        case 'y':
            return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
        case 'z':
            return {{{c, -s, 0}, {s, c, 0}, {0, 0, 1}}};
        default:
            throw std::runtime_error("an axis that is none");
    }
}

// x first, whatever of the three is there.
Axes TurnsXyz(const std::string& axes, const double* degrees) {
    Axes turns = kStraight;
    for (std::size_t i = 0; i < axes.size(); ++i)
        turns = Multiply(Turn(axes[i], degrees[i]), turns);
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
    Point ThreeNumbers() {
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
    Point offset{};
    std::vector<std::string> channels;
};

// Up to and with "MOTION".
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
    std::vector<Joint> placed;
    std::size_t value = 0;
    for (const BvhNode& node : nodes) {
        Point offset = node.offset;
        Axes local = kStraight;
        for (const std::string& channel : node.channels) {
            const char axis = static_cast<char>(channel[0] - 'X' + 'x');
            if (channel.substr(1) == "rotation")
                local = Multiply(local, Turn(axis, row[value]));
            else
                offset[static_cast<std::size_t>(axis - 'x')] = row[value];
            ++value;
        }
        if (node.parent < 0) {
            placed.push_back({offset, local});
        } else {
            const Joint& parent = placed[static_cast<std::size_t>(node.parent)];
            placed.push_back(
                {Add(parent.place, Apply(parent.axes, offset)), Multiply(parent.axes, local)});
        }
        walk[node.name].push_back(placed.back());
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

// From behind ":bonedata".
void ReadBones(Tokens& tokens, AcclaimWalk& out) {
    std::string word = tokens.Word();
    for (; word == "begin"; word = tokens.Word())
        out.bones.insert(ReadBone(tokens));
    if (word != ":hierarchy") throw std::runtime_error("expected :hierarchy");
}

// From behind ":hierarchy"; the bones in the order of their lines, parents first.
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

// A bone turns by C * M * C^-1 seen from its parent, C being the frame of its axis and M its
// motion, and stands at its parent's end.
void PlaceAcclaimFrame(AcclaimWalk& out, const std::vector<std::string>& order, std::size_t frame) {
    const auto& row = out.rows[frame];
    const std::vector<double>& root = row.at("root");
    out.walk["root"].push_back({{root[0], root[1], root[2]}, TurnsXyz("xyz", &root[3])});
    const auto end = [&](const std::string& name) {
        const Joint& start = out.walk.at(name)[frame];
        const auto bone = out.bones.find(name);
        if (bone == out.bones.end()) return start.place;
        Point segment = bone->second.direction;
        for (double& value : segment)
            value *= bone->second.length * out.lengthFactor;
        return Add(start.place, Apply(start.axes, segment));
    };
    for (const std::string& name : order) {
        const AsfBone& bone = out.bones.at(name);
        const Axes axis = TurnsXyz("xyz", bone.axis.data());
        const auto values = row.find(name);
        const Axes motion =
            values == row.end() ? kStraight : TurnsXyz(bone.dof, values->second.data());
        const Axes local = Multiply(Multiply(axis, motion), Transposed(axis));
        out.walk[name].push_back(
            {end(bone.parent), Multiply(out.walk.at(bone.parent)[frame].axes, local)});
    }
    for (const std::string& name : order)
        out.walk[name + "_End"].push_back({end(name), out.walk.at(name)[frame].axes});
}

}  // namespace

Point Add(const Point& a, const Point& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

Point Apply(const Axes& axes, const Point& v) {
    Point out{};
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t k = 0; k < 3; ++k)
            out[i] += axes[i][k] * v[k];
    return out;
}

double Distance(const Point& a, const Point& b) {
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

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
