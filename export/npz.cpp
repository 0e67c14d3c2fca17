#include "export/npz.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "export/figure_facts.h"
#include "export/pose_arrays.h"
#include "export/provenance.h"
#include "export/tables.h"
#include "export/zip_writer.h"
#include "text/byte_sink.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

// The share of the time that computing the poses takes. The rest is for writing them.
constexpr double kPosesShare = 0.6;

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

// Returns the bytes of a std::vector or a LargeArray.
template <class Array>
std::string_view BytesOf(const Array& elements) {
    return {reinterpret_cast<const char*>(elements.data()),
            elements.size() * sizeof(*elements.data())};
}

// Returns the character. If the code is no character, returns U+FFFD, because a reader cannot read
// an array with such a code.
wchar_t ValidCharacter(wchar_t character) {
    return text::IsCharacter(character) ? character : L'\xFFFD';
}

// Adds the arrays of one file.
class ArrayWriter {
  public:
    ArrayWriter(text::ByteSink& out, bool compress)
        : zip_([&out](std::string_view bytes) { out.Write(bytes); }), compress_(compress) {}

    void Add(const std::string& name, const std::string& header, std::string_view elements) {
        const std::string file = name + ".npy";
        if (compress_) return zip_.AddCompressed(file, header, elements);
        const std::uint32_t crc = Crc32(Crc32(0, header), elements);
        zip_.BeginMember(file, std::uint64_t{header.size()} + elements.size(), crc);
        zip_.Write(header);
        zip_.Write(elements);
    }

    // Adds an array of numbers and frees their memory.
    template <class Array>
    void AddNumbers(const std::string& name, std::string_view shape, Array elements) {
        using Element = std::remove_cvref_t<decltype(*elements.data())>;
        Add(name, NpyHeader(TypeOf(Element()), shape), BytesOf(elements));
    }

    // Adds an array without dimensions that holds one text.
    void AddText(const std::string& name, const std::string& utf8) {
        std::wstring text = text::DecodeUtf8(utf8);
        std::transform(text.begin(), text.end(), text.begin(), ValidCharacter);
        const std::vector<wchar_t> characters(text.begin(), text.end());
        Add(name, NpyHeader(fmt::format("<U{}", std::max<std::size_t>(text.size(), 1)), "()"),
            text.empty() ? std::string_view("\0\0\0\0", 4) : BytesOf(characters));
    }

    void Finish() { zip_.Finish(); }

  private:
    static std::string_view TypeOf(double) { return "<f8"; }
    static std::string_view TypeOf(float) { return "<f4"; }
    static std::string_view TypeOf(std::int32_t) { return "<i4"; }
    static std::string_view TypeOf(std::int64_t) { return "<i8"; }
    // Truth values are stored as bytes, because a std::vector<bool> is no array.
    static std::string_view TypeOf(std::uint8_t) { return "|b1"; }

    ZipWriter zip_;
    bool compress_;
};

// Returns the length of the longest name, in characters. Every name takes this many characters in
// the array of names, so one long name can make the array very large. Throws ExportError if the
// array would be too large.
std::size_t NameWidth(const Table& table) {
    constexpr std::size_t kMostCharacters = std::size_t{16} << 20;
    std::size_t width = 1;
    for (const Table::Column& column : table.Columns())
        width = std::max({width, column.name.size(), column.sourceName.size()});
    if (width * table.Columns().size() > kMostCharacters)
        throw ExportError(
            fmt::format("the names need too much space: each of {} joints needs the {} characters"
                        " of the longest name",
                        table.Columns().size(), width));
    return width;
}

// Writes a name of each column with `width` characters. NUL characters are appended to a shorter
// name.
void AddNames(ArrayWriter& arrays, const std::string& name, const Table& table,
              std::wstring Table::Column::*member, std::size_t width) {
    std::vector<wchar_t> text(width * table.Columns().size(), L'\0');
    auto at = text.begin();
    for (const Table::Column& column : table.Columns()) {
        std::transform((column.*member).begin(), (column.*member).end(), at, ValidCharacter);
        at += static_cast<std::ptrdiff_t>(width);
    }
    const std::string shape = fmt::format("({},)", table.Columns().size());
    arrays.Add(name, NpyHeader(fmt::format("<U{}", width), shape), BytesOf(text));
}

void AddSkeleton(ArrayWriter& arrays, const Table& table, std::size_t nameWidth) {
    std::vector<double> offsets;
    std::vector<std::int32_t> parents;
    std::vector<std::uint8_t> isEnd;
    for (const Table::Column& column : table.Columns()) {
        offsets.insert(offsets.end(), column.rest.origin, column.rest.origin + 3);
        parents.push_back(
            column.parent == Joint::kNoParent ? -1 : static_cast<std::int32_t>(column.parent));
        isEnd.push_back(column.isEndSite ? 1 : 0);
    }
    const std::string shape = fmt::format("({},)", parents.size());
    arrays.AddNumbers("offsets", fmt::format("({}, 3)", parents.size()), std::move(offsets));
    arrays.AddNumbers("parents", shape, std::move(parents));
    AddNames(arrays, "names", table, &Table::Column::name, nameWidth);
    AddNames(arrays, "source_names", table, &Table::Column::sourceName, nameWidth);
    arrays.AddNumbers("is_end", shape, std::move(isEnd));
}

void AddTimes(ArrayWriter& arrays, const Table& table) {
    std::vector<double> times;
    std::vector<std::int64_t> numbers;
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        times.push_back(table.Seconds(row));
        numbers.push_back(table.FrameNumber(row));
    }
    const std::string shape = fmt::format("({},)", table.Rows());
    arrays.AddNumbers("times", shape, std::move(times));
    arrays.AddNumbers("frame_numbers", shape, std::move(numbers));
    arrays.AddNumbers("fps", "()", std::vector<double>{FramesPerSecond(table.Times())});
}

template <class Element>
void AddPoses(ArrayWriter& arrays, const TableBlocks& blocks, const Progress& progress) {
    PoseArrays<Element> poses =
        BuildPoseArrays<Element>(blocks, progress.Between(0.0, kPosesShare));
    const Progress writing = progress.Between(kPosesShare, 1.0);
    const auto shape = [&](int width) {
        return fmt::format("({}, {}, {})", blocks.Rows(), blocks.Columns(), width);
    };
    arrays.AddNumbers("positions", shape(3), std::move(poses.positions));
    writing.Report(1, 4);
    arrays.AddNumbers("quaternions", shape(4), std::move(poses.quaternions));
    writing.Report(2, 4);
    arrays.AddNumbers("local_positions", shape(3), std::move(poses.localPositions));
    writing.Report(3, 4);
    arrays.AddNumbers("local_quaternions", shape(4), std::move(poses.localQuaternions));
}

std::string FindingsText(const std::vector<std::string>& findings) {
    return fmt::format("[{}]", fmt::join(findings, ", "));
}

}  // namespace

Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const std::vector<std::string>& findings, const Progress& progress) {
    const Table table(scene, options, true);
    const std::size_t nameWidth = NameWidth(table);
    const FigureFacts facts = DescribeFigure(table.FirstModel(), options);
    const TableBlocks blocks(table, scene, options);
    ArrayWriter arrays(out, options.compress.value_or(false));
    if (options.float32)
        AddPoses<float>(arrays, blocks, progress);
    else
        AddPoses<double>(arrays, blocks, progress);
    AddSkeleton(arrays, table, nameWidth);
    AddTimes(arrays, table);
    arrays.AddNumbers("unit", "()", std::vector<double>{facts.metresPerUnit});
    arrays.AddText("up", std::string(1, facts.up));
    arrays.AddText("findings", FindingsText(findings));
    arrays.AddText("provenance", ProvenanceJson(options).dump());
    arrays.Finish();
    return table.GetNotes();
}

}  // namespace exporters
