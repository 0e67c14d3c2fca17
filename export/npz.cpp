#include "export/npz.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <fmt/format.h>
#include <span>
#include <string>
#include <vector>

#include "export/quaternion.h"
#include "export/tables.h"
#include "export/zip_writer.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Transform;

// Numbers and characters are written as they are in memory. The headers declare them as
// little-endian ("<").
static_assert(std::endian::native == std::endian::little && sizeof(wchar_t) == 4);

// Returns the header of an array, with its type and shape. Blanks are added, so that the length of
// the header is a multiple of 64 bytes.
std::string NpyHeader(std::string_view type, std::string_view shape) {
    std::string text =
        fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': {}, }}", type, shape);
    constexpr std::size_t kPrefixSize = 10;  // signature, version and length
    text.append(63 - (kPrefixSize + text.size()) % 64, ' ');
    text += '\n';
    std::string header("\x93NUMPY\x01\x00", 8);
    header += static_cast<char>(text.size() & 0xFF);
    header += static_cast<char>(text.size() >> 8);
    return header + text;
}

template <class Element>
std::string_view BytesOf(const std::vector<Element>& elements) {
    return {reinterpret_cast<const char*>(elements.data()), elements.size() * sizeof(Element)};
}

void AddArray(ZipWriter& zip, const std::string& name, const std::string& header,
              std::string_view elements) {
    const std::uint32_t crc = Crc32(Crc32(0, header), elements);
    zip.BeginMember(name + ".npy", header.size() + elements.size(), crc);
    zip.Write(header);
    zip.Write(elements);
}

struct PositionRow {
    static constexpr std::size_t kWidth = 3;
    void Put(const Transform& global, double* values) const {
        std::copy_n(global.origin, kWidth, values);
    }
};

struct QuaternionRow {
    static constexpr std::size_t kWidth = 4;
    // On entry `values` holds the quaternion of the previous frame. It receives the new quaternion.
    void Put(const Transform& global, double* values) const {
        const Quaternion q =
            QuaternionNear(global.axes, {values[0], values[1], values[2], values[3]});
        const double inOrder[kWidth] = {q.x, q.y, q.z, q.w};
        std::copy_n(inOrder, kWidth, values);
    }
};

// Calls `visit` with the bytes of each row of an array.
template <class RowKind, class Visit>
void ForEachRow(Table& table, RowKind kind, Visit visit) {
    std::vector<Transform> globals(table.Columns().size());
    std::vector<double> values(globals.size() * RowKind::kWidth, 0.0);
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        table.Row(row, globals);
        for (std::size_t joint = 0; joint < globals.size(); ++joint)
            kind.Put(globals[joint], values.data() + joint * RowKind::kWidth);
        visit(BytesOf(values));
    }
}

// In a ZIP archive the checksum of a member comes before its contents. The motion is therefore
// evaluated twice: first for the checksum, then for the contents. Keeping the contents would need
// more memory than the motion itself.
template <class RowKind>
void AddRows(ZipWriter& zip, const std::string& name, Table& table, RowKind kind) {
    const std::size_t joints = table.Columns().size();
    const std::string header =
        NpyHeader("<f8", fmt::format("({}, {}, {})", table.Rows(), joints, RowKind::kWidth));
    std::uint32_t crc = Crc32(0, header);
    ForEachRow(table, kind, [&](std::string_view row) { crc = Crc32(crc, row); });
    const std::uint64_t size =
        std::uint64_t{table.Rows()} * joints * RowKind::kWidth * sizeof(double);
    zip.BeginMember(name + ".npy", header.size() + size, crc);
    zip.Write(header);
    ForEachRow(table, kind, [&](std::string_view row) { zip.Write(row); });
}

void AddOffsets(ZipWriter& zip, const Table& table) {
    std::vector<double> offsets;
    for (const Table::Column& column : table.Columns())
        offsets.insert(offsets.end(), column.rest.origin, column.rest.origin + 3);
    const std::string shape = fmt::format("({}, 3)", table.Columns().size());
    AddArray(zip, "offsets", NpyHeader("<f8", shape), BytesOf(offsets));
}

void AddParents(ZipWriter& zip, const Table& table) {
    std::vector<std::int32_t> parents;
    for (const Table::Column& column : table.Columns())
        parents.push_back(
            column.parent == Joint::kNoParent ? -1 : static_cast<std::int32_t>(column.parent));
    const std::string shape = fmt::format("({},)", parents.size());
    AddArray(zip, "parents", NpyHeader("<i4", shape), BytesOf(parents));
}

// Returns the character. If the code is no character, returns U+FFFD, because a reader cannot read
// an array with such a code.
wchar_t ValidCharacter(wchar_t character) {
    return text::IsCharacter(character) ? character : L'\xFFFD';
}

// Returns the length of the longest name, in characters. Every name takes this many characters in
// the array of names, so one long name can make the array very large. Throws ExportError if the
// array would be too large.
std::size_t NameWidth(const Table& table) {
    constexpr std::size_t kMostCharacters = std::size_t{16} << 20;
    std::size_t width = 1;
    for (const Table::Column& column : table.Columns())
        width = std::max(width, column.name.size());
    if (width * table.Columns().size() > kMostCharacters)
        throw ExportError(
            fmt::format("the names need too much space: each of {} joints needs the {} characters"
                        " of the longest name",
                        table.Columns().size(), width));
    return width;
}

// Writes each name with `width` characters. NUL characters are appended to a shorter name.
void AddNames(ZipWriter& zip, const Table& table, std::size_t width) {
    std::vector<wchar_t> text(width * table.Columns().size(), L'\0');
    auto at = text.begin();
    for (const Table::Column& column : table.Columns()) {
        std::transform(column.name.begin(), column.name.end(), at, ValidCharacter);
        at += static_cast<std::ptrdiff_t>(width);
    }
    const std::string shape = fmt::format("({},)", table.Columns().size());
    AddArray(zip, "names", NpyHeader(fmt::format("<U{}", width), shape), BytesOf(text));
}

}  // namespace

Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options) {
    Table table(scene, options, true);
    const std::size_t nameWidth = NameWidth(table);
    ZipWriter zip([&](std::string_view bytes) { out.Write(bytes); });
    AddRows(zip, "positions", table, PositionRow());
    AddRows(zip, "quaternions", table, QuaternionRow());
    AddOffsets(zip, table);
    AddParents(zip, table);
    AddNames(zip, table, nameWidth);
    const bool isPose = table.Times().IsPose();
    const std::vector<double> rate = {isPose ? 0.0 : 1.0 / SecondsPerStep(table.Times())};
    AddArray(zip, "fps", NpyHeader("<f8", "()"), BytesOf(rate));
    zip.Finish();
    return table.GetNotes();
}

}  // namespace exporters
