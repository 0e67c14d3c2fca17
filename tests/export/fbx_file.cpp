#include "tests/export/fbx_file.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <zlib.h>

namespace exported {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view kMagic = "Kaydara FBX Binary  \0\x1A\0"sv;

void Require(bool isTrue, const std::string& what) {
    if (!isTrue) throw std::runtime_error("bad FBX: " + what);
}

class Reader {
  public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    FbxRecord ReadFile() {
        Require(Take(kMagic.size()) == kMagic, "header");
        Require(Number<std::uint32_t>() == 7500, "version");
        FbxRecord root;
        ReadList(root, bytes_.size());
        ReadFooter();
        return root;
    }

  private:
    std::string_view Take(std::size_t count) {
        Require(count <= bytes_.size() - at_, "end of file");
        at_ += count;
        return bytes_.substr(at_ - count, count);
    }

    template <class Value>
    Value Number() {
        Value value{};
        std::memcpy(&value, Take(sizeof value).data(), sizeof value);
        return value;
    }

    // Reads records up to the empty one that ends the list.
    void ReadList(FbxRecord& owner, std::uint64_t end) {
        owner.hasList = true;
        while (true) {
            const auto next = Number<std::uint64_t>();
            const auto count = Number<std::uint64_t>();
            const auto size = Number<std::uint64_t>();
            const std::string_view name = Take(Number<std::uint8_t>());
            if (next == 0) {
                Require(count == 0 && size == 0 && name.empty(), "record that ends a list");
                return;
            }
            Require(next <= end, "record after the end of its owner");
            FbxRecord& record = owner.children.emplace_back();
            record.name = name;
            const std::size_t begin = at_;
            for (std::uint64_t index = 0; index < count; ++index)
                record.properties.push_back(ReadProperty());
            Require(at_ - begin == size, "size of properties");
            record.bytes = bytes_.substr(begin, size);
            if (at_ < next) ReadList(record, next);
            Require(at_ == next, "end of a record");
        }
    }

    FbxRecord::Property ReadProperty() {
        switch (Number<char>()) {
            case 'C':
                return Number<char>() != 0;
            case 'I':
                return Number<std::int32_t>();
            case 'L':
                return Number<std::int64_t>();
            case 'D':
                return Number<double>();
            case 'S':
            case 'R':
                return std::string(Take(Number<std::uint32_t>()));
            case 'i':
                return Array<std::int32_t>();
            case 'l':
                return Array<std::int64_t>();
            case 'f':
                return Array<float>();
            case 'd':
                return Array<double>();
            default:
                throw std::runtime_error("bad FBX: type of a property");
        }
    }

    template <class Value>
    std::vector<Value> Array() {
        std::vector<Value> values(Number<std::uint32_t>());
        const auto encoding = Number<std::uint32_t>();
        const std::string_view stored = Take(Number<std::uint32_t>());
        const std::size_t size = values.size() * sizeof(Value);
        if (encoding == 0) {
            Require(stored.size() == size, "size of an array");
            std::memcpy(values.data(), stored.data(), size);
            return values;
        }
        Require(encoding == 1, "encoding of an array");
        uLongf unpacked = size;
        const int status = uncompress(reinterpret_cast<Bytef*>(values.data()), &unpacked,
                                      reinterpret_cast<const Bytef*>(stored.data()), stored.size());
        Require(status == Z_OK && unpacked == size, "compressed array");
        return values;
    }

    void ReadFooter() {
        const std::string_view identity = Take(16);
        Require(identity.substr(0, 2) == "\xFA\xBC", "identity of the footer");
        const std::size_t padding = 16 - at_ % 16;
        Require(Take(padding) == std::string(padding, '\0'), "padding of the footer");
        Require(Number<std::uint32_t>() == 0, "zeros of the footer");
        Require(Number<std::uint32_t>() == 7500, "version in the footer");
        Require(Take(120) == std::string(120, '\0'), "second zeros of the footer");
        Require(Take(16).substr(0, 2) == "\xF8\x5A", "end of the footer");
        Require(at_ == bytes_.size(), "bytes after the footer");
    }

    std::string_view bytes_;
    std::size_t at_ = 0;
};

double NumberOf(const FbxRecord::Property& property) {
    if (const auto* value = std::get_if<double>(&property)) return *value;
    if (const auto* value = std::get_if<std::int32_t>(&property)) return *value;
    if (const auto* value = std::get_if<std::int64_t>(&property))
        return static_cast<double>(*value);
    throw std::runtime_error("bad FBX: a property is no number");
}

}  // namespace

const FbxRecord& FbxRecord::operator[](std::string_view child) const {
    for (const FbxRecord& record : children)
        if (record.name == child) return record;
    throw std::runtime_error("no " + std::string(child) + " in " + name);
}

bool FbxRecord::Has(std::string_view child) const {
    return std::any_of(children.begin(), children.end(),
                       [&](const FbxRecord& record) { return record.name == child; });
}

std::vector<double> FbxRecord::Numbers(std::string_view property) const {
    for (const FbxRecord& entry : (*this)["Properties70"].children) {
        if (entry.Get<std::string>() != property) continue;
        std::vector<double> numbers;
        for (std::size_t index = 4; index < entry.properties.size(); ++index)
            numbers.push_back(NumberOf(entry.properties[index]));
        return numbers;
    }
    throw std::runtime_error("no property " + std::string(property) + " in " + name);
}

FbxFileReader::FbxFileReader(const std::string& bytes) : root_(Reader(bytes).ReadFile()) {
    for (const FbxRecord& record : root_["Objects"].children) {
        const auto& full = record.Get<std::string>(1);
        const std::size_t end = full.find("\0\1"sv);
        Require(end != std::string::npos && full.find("\0\1"sv, end + 1) == std::string::npos,
                "name of an object");
        const bool isNew =
            objects_
                .emplace(record.Get<std::int64_t>(),
                         FbxObject{&record, full.substr(0, end), full.substr(end + 2),
                                   record.Get<std::string>(2), -1, ""})
                .second;
        Require(isNew && record.hasList, "object");
    }
    for (const FbxRecord& link : root_["Connections"].children) {
        const std::int64_t object = link.Get<std::int64_t>(1);
        const std::int64_t owner = link.Get<std::int64_t>(2);
        Require(objects_.contains(object) && (owner == 0 || objects_.contains(owner)),
                "connection");
        const bool isProperty = link.Get<std::string>() == "OP";
        links_.push_back({object, owner, isProperty ? link.Get<std::string>(3) : ""});
        FbxObject& connected = objects_.at(object);
        if (connected.owner == -1) {
            connected.owner = owner;
            connected.ownerProperty = links_.back().property;
        }
    }
}

std::int64_t FbxFileReader::Find(std::string_view kind, std::string_view name) const {
    for (const auto& [id, object] : objects_)
        if (object.kind == kind && object.name == name) return id;
    throw std::runtime_error("no " + std::string(kind) + " " + std::string(name));
}

std::vector<std::int64_t> FbxFileReader::ConnectedTo(std::int64_t owner,
                                                     std::string_view kind) const {
    std::vector<std::int64_t> ids;
    for (const Link& link : links_)
        if (link.owner == owner && objects_.at(link.object).kind == kind)
            ids.push_back(link.object);
    std::sort(ids.begin(), ids.end());
    return ids;
}

const FbxRecord* FbxFileReader::Curve(std::string_view joint, std::string_view property,
                                      std::string_view axis) const {
    const std::int64_t model = Find("Model", joint);
    for (const Link& link : links_) {
        if (link.owner != model || link.property != property) continue;
        for (const Link& curve : links_)
            if (curve.owner == link.object && curve.property == axis)
                return objects_.at(curve.object).record;
    }
    return nullptr;
}

}  // namespace exported
