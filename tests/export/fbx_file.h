// Reads a binary FBX file for tests. It trusts nothing: a size or an offset that does not fit makes
// it throw std::runtime_error.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace exported {

struct FbxRecord {
    using Property = std::variant<bool, std::int32_t, std::int64_t, double, std::string,
                                  std::vector<std::int32_t>, std::vector<std::int64_t>,
                                  std::vector<float>, std::vector<double>>;

    std::string name;
    std::vector<Property> properties;
    std::vector<FbxRecord> children;
    std::string bytes;     // of the properties, as they are in the file
    bool hasList = false;  // whether a list of records, which may be empty, ends the record

    // The first child with this name. Throws std::runtime_error if there is none.
    const FbxRecord& operator[](std::string_view child) const;
    bool Has(std::string_view child) const;
    template <class Value>
    const Value& Get(std::size_t index = 0) const {
        return std::get<Value>(properties.at(index));
    }
    // The values of an entry of the child "Properties70", as numbers. Throws std::runtime_error if
    // there is no such entry.
    std::vector<double> Numbers(std::string_view property) const;
};

// An object and what is connected to it.
struct FbxObject {
    const FbxRecord* record = nullptr;
    std::string name;
    std::string kind;
    std::string variant;
    std::int64_t owner = -1;  // the id to which it is connected first; -1 if there is none
    std::string ownerProperty;
};

class FbxFileReader {
  public:
    // Reads the whole file, with its header and footer.
    explicit FbxFileReader(const std::string& bytes);

    const FbxRecord& Root() const { return root_; }
    const FbxRecord& operator[](std::string_view name) const { return root_[name]; }
    const std::map<std::int64_t, FbxObject>& Objects() const { return objects_; }
    // The id of the object with this kind and name. Throws std::runtime_error if there is none.
    std::int64_t Find(std::string_view kind, std::string_view name) const;
    // The objects that are connected to `owner`, in the order of their ids.
    std::vector<std::int64_t> ConnectedTo(std::int64_t owner, std::string_view kind) const;
    // The curve of a joint's channel, such as "Lcl Rotation" and "d|X". Null if there is none.
    const FbxRecord* Curve(std::string_view joint, std::string_view property,
                           std::string_view axis) const;

  private:
    struct Link {
        std::int64_t object;
        std::int64_t owner;
        std::string property;
    };

    FbxRecord root_;
    std::map<std::int64_t, FbxObject> objects_;
    std::vector<Link> links_;
};

}  // namespace exported
