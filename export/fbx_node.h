// Builds and writes the nodes of a binary FBX file, version 7.5.
//
// The layout of the file is not published by its makers. The facts here are those of
// https://code.blender.org/2013/08/fbx-binary-file-format-specification/, with the offsets of 64
// bits that version 7.5 brought.
// Internal to export/.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "export/progress.h"
#include "text/byte_sink.h"

namespace exporters {

// The codes of the array properties, as they stand in the file.
enum class FbxArrayType : char { Int32 = 'i', Int64 = 'l', Float = 'f', Double = 'd' };

// An array property. The numbers are little-endian.
struct FbxArray {
    FbxArrayType type = FbxArrayType::Double;
    std::size_t count = 0;
    std::string_view bytes;  // the numbers, deflated or as they are; not owned
    bool isDeflated = false;
};

template <class Number>
constexpr FbxArrayType FbxArrayTypeOf() {
    if constexpr (std::is_same_v<Number, std::int32_t>) return FbxArrayType::Int32;
    if constexpr (std::is_same_v<Number, std::int64_t>) return FbxArrayType::Int64;
    if constexpr (std::is_same_v<Number, float>) return FbxArrayType::Float;
    if constexpr (std::is_same_v<Number, double>) return FbxArrayType::Double;
}

// Returns an array property of numbers that are written as they are. The caller keeps them.
template <class Number>
FbxArray PlainArray(std::span<const Number> numbers) {
    return {FbxArrayTypeOf<Number>(),
            numbers.size(),
            {reinterpret_cast<const char*>(numbers.data()), numbers.size_bytes()}};
}

// Returns an array property of numbers that DeflateNumbers (export/number_deflate.h) has
// compressed. The caller keeps `deflated`.
template <class Number>
FbxArray DeflatedArray(std::size_t count, std::string_view deflated) {
    return {FbxArrayTypeOf<Number>(), count, deflated, true};
}

// A node has a name, a list of properties and a list of nodes below it.
class FbxNode {
  public:
    explicit FbxNode(std::string_view name) : name_(name) {}

    // Each function appends a property to those of earlier calls and returns this node.
    FbxNode& Bool(bool value);
    FbxNode& Int(std::int32_t value);
    FbxNode& Long(std::int64_t value);
    FbxNode& Double(double value);
    FbxNode& Text(std::string_view value);
    FbxNode& Bytes(std::string_view value);
    // No property may follow an array. The bytes of the array are not copied. Throws ExportError if
    // the array does not fit into a file: its numbers, or its bytes, are 2^32 or more.
    FbxNode& Array(const FbxArray& array);

    // Appends an array property with a copy of the numbers, compressed if that is shorter. Throws
    // like Array, and std::bad_alloc if there is no memory.
    template <class Number>
    FbxNode& Numbers(std::span<const Number> numbers) {
        return CopyArray(PlainArray(numbers));
    }

    // Appends a node and returns it. The reference stays valid.
    FbxNode& Add(std::string_view name);
    // Appends a node with one property.
    void AddInt(std::string_view name, std::int32_t value) { Add(name).Int(value); }
    void AddText(std::string_view name, std::string_view value) { Add(name).Text(value); }
    // Ends the node with an empty list of nodes, although there is no node in it. Some readers
    // expect that list in objects that usually have nodes.
    void CloseList() { isListClosed_ = true; }

  private:
    friend class FbxFile;

    // Computes end_ and nodes_ of this node and of the nodes below it. `begin` is the offset of
    // this node in the file. Returns end_.
    std::uint64_t Place(std::uint64_t begin);
    std::uint64_t PropertyBytes() const { return properties_.size() + array_.size(); }
    bool HasList() const { return isListClosed_ || !children_.empty(); }
    FbxNode& CopyArray(const FbxArray& array);
    template <class Number>
    FbxNode& Append(char type, Number value);

    std::string name_;
    std::uint64_t count_ = 0;  // of the properties
    std::string properties_;   // up to the bytes of the array, if there is one
    std::string_view array_;   // the bytes of the array
    std::vector<std::unique_ptr<FbxNode>> children_;
    bool isListClosed_ = false;
    std::uint64_t end_ = 0;  // the offset in the file of the first byte after the node
    std::size_t nodes_ = 0;  // this node and all below it, counted by Place
};

// The whole file: the header, a list of nodes and the footer.
class FbxFile {
  public:
    FbxNode& Add(std::string_view name) { return root_.Add(name); }
    // Adds what identifies the file. All files have the same identity and the same time, so that
    // equal scenes make equal files.
    void AddIdentity(std::string_view creator);
    // Passes on what the sink and `progress` throw.
    void Write(text::ByteSink& out, const Progress& progress);

  private:
    FbxNode root_{""};
};

}  // namespace exporters
