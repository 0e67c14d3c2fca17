#include "export/fbx_node.h"

#include <bit>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include "export/number_deflate.h"
#include "export/options.h"

namespace exporters {
namespace {

using namespace std::string_view_literals;

// The format is little-endian, and numbers are written as they are in memory.
static_assert(std::endian::native == std::endian::little);

constexpr std::uint32_t kVersion = 7500;
constexpr std::string_view kMagic = "Kaydara FBX Binary  \0\x1A\0"sv;
// Before the name of a node: its end, the number and the bytes of its properties, each in 64 bits,
// and the length of its name in 8.
constexpr std::size_t kNodeHeader = 3 * sizeof(std::uint64_t) + 1;
constexpr std::size_t kWorthDeflating = 256;  // bytes
constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max();

// The identity of a file is computed from the time at which it was made, and the first bytes of the
// footer from both. These three belong together.
constexpr std::string_view kTime = "1970-01-01 10:00:00:000";
constexpr std::string_view kIdentity =
    "\x28\xB3\x2A\xEB\xB6\x24\xCC\xC2\xBF\xC8\xB0\x2A\xA9\x2B\xFC\xF1"sv;
constexpr std::string_view kFooterIdentity =
    "\xFA\xBC\xAB\x09\xD0\xC8\xD4\x66\xB1\x76\xFB\x83\x1C\xF7\x26\x7E"sv;
constexpr std::string_view kFooterEnd =
    "\xF8\x5A\x8C\x6A\xDE\xF5\xD9\x7E\xEC\xE9\x0C\xE3\x75\x8F\x29\x0B"sv;
constexpr std::size_t kFooterZeros = 120;
constexpr std::size_t kFooterAlignment = 16;

template <class Number>
void AppendNumber(std::string& bytes, Number value) {
    char raw[sizeof(Number)];
    std::memcpy(raw, &value, sizeof raw);
    bytes.append(raw, sizeof raw);
}

// Throws ExportError if the number does not fit into 32 bits.
std::uint32_t RequireSize(std::size_t size) {
    if (size > kMost)
        throw ExportError("the motion is too long for FBX, whose arrays end at 4 GiB");
    return static_cast<std::uint32_t>(size);
}

// Collects small pieces, so that the sink is not called for each of them.
class Collector {
  public:
    explicit Collector(text::ByteSink& out) : out_(out) {}

    std::string& Bytes() { return bytes_; }
    std::uint64_t Offset() const { return written_ + bytes_.size(); }
    void FlushIfLarge() {
        if (bytes_.size() >= kEnough) Flush();
    }
    void Write(std::string_view bytes) {
        if (bytes.size() < kEnough) {
            bytes_ += bytes;
            return;
        }
        Flush();
        out_.Write(bytes);
        written_ += bytes.size();
    }
    void Flush() {
        out_.Write(bytes_);
        written_ += bytes_.size();
        bytes_.clear();
    }

  private:
    static constexpr std::size_t kEnough = std::size_t{64} << 10U;

    text::ByteSink& out_;
    std::string bytes_;
    std::uint64_t written_ = 0;
};

}  // namespace

template <class Number>
FbxNode& FbxNode::Append(char type, Number value) {
    ++count_;
    properties_ += type;
    AppendNumber(properties_, value);
    return *this;
}

FbxNode& FbxNode::Bool(bool value) {
    return Append('C', static_cast<char>(value));
}
FbxNode& FbxNode::Int(std::int32_t value) {
    return Append('I', value);
}
FbxNode& FbxNode::Long(std::int64_t value) {
    return Append('L', value);
}
FbxNode& FbxNode::Double(double value) {
    return Append('D', value);
}
FbxNode& FbxNode::Text(std::string_view value) {
    Append('S', RequireSize(value.size())).properties_ += value;
    return *this;
}
FbxNode& FbxNode::Bytes(std::string_view value) {
    Append('R', RequireSize(value.size())).properties_ += value;
    return *this;
}

FbxNode& FbxNode::Array(const FbxArray& array) {
    Append(static_cast<char>(array.type), RequireSize(array.count));
    AppendNumber(properties_, std::uint32_t{array.isDeflated});
    AppendNumber(properties_, RequireSize(array.bytes.size()));
    array_ = array.bytes;
    return *this;
}

FbxNode& FbxNode::CopyArray(const FbxArray& array) {
    std::string deflated;
    if (array.bytes.size() >= kWorthDeflating) deflated = DeflateNumbers(array.bytes);
    FbxArray copied = array;
    if (!deflated.empty() && deflated.size() < array.bytes.size()) {
        copied.bytes = deflated;
        copied.isDeflated = true;
    }
    Array(copied);
    properties_ += std::exchange(array_, {});
    return *this;
}

FbxNode& FbxNode::Add(std::string_view name) {
    return *children_.emplace_back(std::make_unique<FbxNode>(name));
}

std::uint64_t FbxNode::Place(std::uint64_t begin) {
    end_ = begin + kNodeHeader + name_.size() + PropertyBytes();
    nodes_ = 1;
    for (const std::unique_ptr<FbxNode>& child : children_) {
        end_ = child->Place(end_);
        nodes_ += child->nodes_;
    }
    if (HasList()) end_ += kNodeHeader;
    return end_;
}

void FbxFile::AddIdentity(std::string_view creator) {
    root_.Add("FileId").Bytes(kIdentity);
    root_.AddText("CreationTime", kTime);
    root_.AddText("Creator", creator);
}

void FbxFile::Write(text::ByteSink& out, const Progress& progress) {
    // The list of the top nodes ends like any other, and the file has no node around it.
    root_.CloseList();
    const std::uint64_t begin = kMagic.size() + sizeof kVersion;
    root_.Place(begin - kNodeHeader);

    Collector bytes(out);
    bytes.Write(kMagic);
    AppendNumber(bytes.Bytes(), kVersion);
    struct Level {
        const FbxNode* node;
        std::size_t next;  // the child to write next
    };
    std::vector<Level> levels = {{&root_, 0}};
    std::size_t nodes = 0;
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.node->children_.size()) {
            if (level.node->HasList()) bytes.Bytes().append(kNodeHeader, '\0');
            levels.pop_back();
            continue;
        }
        const FbxNode& node = *level.node->children_[level.next++];
        progress.Report(nodes++, root_.nodes_);
        AppendNumber(bytes.Bytes(), node.end_);
        AppendNumber(bytes.Bytes(), node.count_);
        AppendNumber(bytes.Bytes(), node.PropertyBytes());
        bytes.Bytes() += static_cast<char>(node.name_.size());
        bytes.Bytes() += node.name_;
        bytes.Write(node.properties_);
        bytes.Write(node.array_);
        bytes.FlushIfLarge();
        levels.push_back({&node, 0});
    }

    bytes.Bytes() += kFooterIdentity;
    // There is at least one zero byte before the next aligned offset.
    bytes.Bytes().append(kFooterAlignment - bytes.Offset() % kFooterAlignment, '\0');
    bytes.Bytes().append(4, '\0');
    AppendNumber(bytes.Bytes(), kVersion);
    bytes.Bytes().append(kFooterZeros, '\0');
    bytes.Bytes() += kFooterEnd;
    bytes.Flush();
}

}  // namespace exporters
