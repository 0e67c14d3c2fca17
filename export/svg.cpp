#include "export/svg.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <fmt/format.h>
#include <numeric>
#include <string_view>

#include "export/body_sides.h"
#include "export/sheet_layout.h"
#include "export/tables.h"
#include "headless/text.h"
#include "text/number_text.h"
#include "text/wide_text.h"
#include "text/xml_text.h"

namespace exporters {
namespace {

constexpr std::size_t kMostBones = 260;       // with eight poses, this keeps a picture below 60 kB
constexpr std::size_t kLongestTitle = 44;     // characters
constexpr std::size_t kLongestFindings = 76;  // characters
constexpr double kMargin = 20.0;
constexpr double kPosesTop = 108.0;
constexpr double kGround = kPosesTop + kSheetHeight;
constexpr double kPicture[2] = {kSheetWidth + 2.0 * kMargin, kGround + 52.0};
// The box of the path from above.
constexpr double kPathBox[2] = {150.0, 72.0};
constexpr double kPathRight = kPicture[0] - kMargin;
constexpr double kPathTop = 18.0;

constexpr std::string_view kStyle = R"(<style>
svg{--paper:#fbfaf8;--ink:#3f4650;--soft:#8b929b;--line:#d5d3ce;--left:#3a74b4;--right:#cf7a26;--mark:#3f4650}
@media(prefers-color-scheme:dark){svg{--paper:#1d2025;--ink:#d6d9dd;--soft:#8e959f;--line:#3b4048;--left:#6ea6e2;--right:#e39a52;--mark:#d6d9dd}}
text{font-family:system-ui,sans-serif;fill:var(--ink)}
.t{font-size:26px;font-weight:600}.f{font-size:21px;fill:var(--soft)}
path{fill:none;stroke:var(--ink);stroke-width:4;stroke-linecap:round;stroke-linejoin:round}
.l{stroke:var(--left)}.r{stroke:var(--right)}.h{fill:var(--ink);stroke:none}
.g{stroke:var(--line);stroke-width:2}.p{stroke:var(--soft);stroke-width:2}.m{fill:var(--mark)}
</style>
)";

// Rounds to tenths of a pixel.
std::string Pixels(double number) {
    char text[text::kLongestNumber];
    return {text, text::WriteNumber(text, number, 1)};
}

std::string PointText(const SheetPoint& point) {
    return Pixels(point.x) + ' ' + Pixels(point.y);
}

std::string Shortened(std::wstring text, std::size_t most) {
    if (text.size() > most) text = text.substr(0, most - 1) + L"\u2026";
    return text::XmlText(text::EncodeUtf8(text));
}

// Writes a number with up to `decimals` digits after the decimal point.
std::string Short(double number, int decimals) {
    char text[text::kLongestNumber];
    return {text, text::WriteNumber(text, number, decimals)};
}

// A bone: a joint with a parent.
using Bones = std::vector<std::size_t>;

// Returns the bones to draw, in the order of the joints.
Bones ChooseBones(const Table& table) {
    Bones bones;
    const std::vector<Table::Column>& columns = table.Columns();
    for (std::size_t column = 0; column < columns.size(); ++column)
        if (columns[column].parent != Joint::kNoParent) bones.push_back(column);
    if (bones.size() <= kMostBones) return bones;
    const auto lengthOf = [&](std::size_t column) {
        const double* const offset = columns[column].rest.origin;
        return std::hypot(offset[0], offset[1], offset[2]);
    };
    std::stable_sort(bones.begin(), bones.end(),
                     [&](std::size_t a, std::size_t b) { return lengthOf(a) > lengthOf(b); });
    bones.resize(kMostBones);
    std::sort(bones.begin(), bones.end());
    return bones;
}

class Sheet {
  public:
    Sheet(const Table& table, const SheetLayout& layout)
        : table_(table), layout_(layout), bones_(ChooseBones(table)) {
        std::vector<std::wstring> names;
        for (const Table::Column& column : table.Columns())
            names.push_back(column.name);
        sides_ = SidesOf(names);
        head_ = FindHead();
    }

    std::string Draw(const std::wstring& name, const std::vector<std::string>& codes) {
        const std::string title = Shortened(name, kLongestTitle);
        text_ = fmt::format(
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 {} {}\" role=\"img\">\n"
            "<title>{}</title>\n",
            Pixels(kPicture[0]), Pixels(kPicture[1]), title);
        text_ += kStyle;
        text_ += fmt::format("<rect width=\"{}\" height=\"{}\" fill=\"var(--paper)\"/>\n",
                             Pixels(kPicture[0]), Pixels(kPicture[1]));
        DrawText("t", 44.0, title);
        DrawText("f", 76.0, FactsText());
        DrawPath();
        text_ += fmt::format("<path class=\"g\" d=\"M{} {}H{}\"/>\n", Pixels(kMargin),
                             Pixels(kGround + 3.0), Pixels(kPicture[0] - kMargin));
        for (std::size_t pose = 0; pose < layout_.poses.size(); ++pose)
            DrawPose(pose);
        DrawText("f", kGround + 36.0, FindingsText(codes));
        text_ += "</svg>\n";
        return std::move(text_);
    }

  private:
    void DrawText(std::string_view style, double y, const std::string& text) {
        text_ += fmt::format("<text class=\"{}\" x=\"{}\" y=\"{}\">{}</text>\n", style,
                             Pixels(kMargin), Pixels(y), text);
    }

    std::string FactsText() const {
        if (table_.Times().IsPose()) return "no motion" + HeightText();
        const std::size_t frames = table_.Rows();
        const double rate = FramesPerSecond(table_.Times());
        const double seconds = table_.Seconds(frames - 1) + (rate > 0.0 ? 1.0 / rate : 0.0);
        return fmt::format("{} frame{} · {} s · {}/s{}", frames, frames == 1 ? "" : "s",
                           Short(seconds, 2), Short(rate, 2), HeightText());
    }

    std::string HeightText() const {
        if (!(layout_.height > 0.0)) return {};
        if (layout_.metresPerUnit > 0.0)
            return " · " + Short(layout_.height * layout_.metresPerUnit, 2) + " m";
        return " · " + Short(layout_.height, 2) + " units";
    }

    static std::string FindingsText(const std::vector<std::string>& codes) {
        std::string text;
        for (std::size_t index = 0; index < codes.size(); ++index) {
            const std::string more = fmt::format(" +{}", codes.size() - index);
            if (text.size() + codes[index].size() + more.size() > kLongestFindings)
                return text::XmlText(text + more);
            text += (text.empty() ? "" : " ") + codes[index];
        }
        return text::XmlText(text);
    }

    // Draws the path from above into its box at the upper right.
    void DrawPath() {
        if (layout_.path.size() < 2) return;
        double least[2] = {layout_.path.front().x, layout_.path.front().y};
        double most[2] = {least[0], least[1]};
        for (const SheetPoint& point : layout_.path) {
            least[0] = std::min(least[0], point.x);
            least[1] = std::min(least[1], point.y);
            most[0] = std::max(most[0], point.x);
            most[1] = std::max(most[1], point.y);
        }
        // A path that is short compared with the figure is not blown up.
        const double width = std::max(most[0] - least[0], kSheetHeight / 2.0);
        const double height = std::max(most[1] - least[1], 1e-9);
        const double scale = std::min(kPathBox[0] / width, kPathBox[1] / height);
        const double centre[2] = {(least[0] + most[0]) / 2.0, (least[1] + most[1]) / 2.0};
        const auto place = [&](const SheetPoint& point) {
            return SheetPoint{kPathRight - kPathBox[0] / 2.0 + scale * (point.x - centre[0]),
                              kPathTop + kPathBox[1] / 2.0 + scale * (point.y - centre[1])};
        };
        std::string line;
        for (const SheetPoint& point : layout_.path)
            line += (line.empty() ? "M" : "L") + PointText(place(point));
        text_ += fmt::format("<path class=\"p\" d=\"{}\"/>\n", line);
        for (const std::size_t mark : layout_.marks) {
            const SheetPoint point = place(layout_.path[mark]);
            text_ += fmt::format("<circle class=\"m\" cx=\"{}\" cy=\"{}\" r=\"3\"/>\n",
                                 Pixels(point.x), Pixels(point.y));
        }
    }

    void DrawPose(std::size_t pose) {
        const auto count = static_cast<double>(layout_.poses.size());
        // Earlier poses are fainter.
        const double opacity =
            count < 2.0 ? 1.0 : 0.45 + 0.55 * static_cast<double>(pose) / (count - 1.0);
        text_ += fmt::format("<g opacity=\"{}\" transform=\"translate({} {})\">\n",
                             Short(opacity, 2), Pixels(kMargin), Pixels(kPosesTop));
        // The limb that is drawn last lies over the others.
        for (const Side side : {Side::Right, Side::Middle, Side::Left})
            DrawSide(layout_.poses[pose], side);
        DrawHead(layout_.poses[pose]);
        text_ += "</g>\n";
    }

    void DrawSide(const std::vector<SheetPoint>& points, Side side) {
        static constexpr std::string_view kStyles[] = {"", " class=\"l\"", " class=\"r\""};
        std::string line;
        std::size_t last = Joint::kNoParent;  // the joint at which the line ends
        for (const std::size_t bone : bones_) {
            if (sides_[bone] != side || bone == head_) continue;
            const std::size_t parent = table_.Columns()[bone].parent;
            if (parent != last) line += 'M' + PointText(points[parent]);
            line += 'L' + PointText(points[bone]);
            last = bone;
        }
        if (line.empty()) return;
        text_ += fmt::format("<path{} d=\"{}\"/>\n", kStyles[static_cast<std::size_t>(side)], line);
    }

    // The head is the highest end of the first pose. A disc is drawn instead of its bone, of the
    // bone's size, but not larger than a head can be.
    void DrawHead(const std::vector<SheetPoint>& points) {
        if (head_ == Joint::kNoParent) return;
        const SheetPoint& from = points[table_.Columns()[head_].parent];
        const SheetPoint& to = points[head_];
        const double least = 0.03 * layout_.tallest;
        const double most = 0.07 * layout_.tallest;
        const double radius =
            std::clamp(std::hypot(to.x - from.x, to.y - from.y) / 2.0, least, most);
        text_ += fmt::format("<circle class=\"h\" cx=\"{}\" cy=\"{}\" r=\"{}\"/>\n",
                             Pixels((from.x + to.x) / 2.0), Pixels((from.y + to.y) / 2.0),
                             Pixels(radius));
    }

    std::size_t FindHead() const {
        std::size_t head = Joint::kNoParent;
        if (layout_.poses.empty()) return head;
        const std::vector<SheetPoint>& points = layout_.poses.front();
        for (const std::size_t bone : bones_)
            if (sides_[bone] == Side::Middle && table_.Columns()[bone].isEndSite &&
                (head == Joint::kNoParent || points[bone].y < points[head].y))
                head = bone;
        return head;
    }

    const Table& table_;
    const SheetLayout& layout_;
    Bones bones_;
    std::vector<Side> sides_;
    // The end site of the head; Joint::kNoParent if the figure has none.
    std::size_t head_ = Joint::kNoParent;
    std::string text_;
};

std::wstring TitleOf(const headless::Scene& scene, const Options& options) {
    const std::vector<ExportedModel> models = ExportedModels(scene, options);
    std::wstring title(headless::View(models.front().object->name));
    if (models.size() > 1) title += L" +" + std::to_wstring(models.size() - 1);
    return title;
}

}  // namespace

Notes WriteSvg(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const std::vector<std::string>& codes, const Progress& progress) {
    const Table table(scene, options, false);
    const SheetLayout layout = ArrangeSheet(table, options, progress);
    out.Write(Sheet(table, layout).Draw(TitleOf(scene, options), codes));
    return table.GetNotes();
}

}  // namespace exporters
