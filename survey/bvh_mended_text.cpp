#include "survey/bvh_mended_text.h"

#include <utility>

#include "survey/bvh_plain_rows.h"
#include "survey/bvh_rows.h"
#include "survey/finding_list.h"
#include "survey/line_marks.h"
#include "threads/thread_count.h"

namespace survey {
namespace {

class MendedBvh final : public MendedText {
  public:
    explicit MendedBvh(std::shared_ptr<const BvhReading> reading) : reading_(std::move(reading)) {}

    std::uint64_t LikelyBytes() const override {
        std::uint64_t bytes = Text().size();
        for (const BvhPart& part : reading_->parts)
            bytes += LikelyNewBytes(part);
        return bytes;
    }

    std::vector<LineMark> Write(text::ByteSink& out) const override {
        LineWriter writer(out);
        for (const BvhPart& part : reading_->parts) {
            const bool isLast = &part == &reading_->parts.back();
            const bool isRead = part.hasFrames || !part.section.motion.present;
            const BvhFrames found = isRead ? BvhFrames() : Find(part);
            WriteSection(part, isRead ? part.frames : found, Text(), !isLast, writer);
        }
        return writer.Finish();
    }

  private:
    std::string_view Text() const { return reading_->source.Text(); }

    BvhFrames Find(const BvhPart& part) const {
        BvhFrames frames;
        const auto bytes =
            static_cast<std::uint64_t>(Text().data() + Text().size() - part.section.motion.rows.at);
        if (FindPlainRows(part.section, Text(), part.rowCount, threads::CountFor(bytes), frames))
            return frames;
        frames = {};
        FindingList ignored(reading_->source);  // stays empty: the scan found nothing odd
        ReadRows(part.section, Text(), ignored, frames);
        return frames;
    }

    std::shared_ptr<const BvhReading> reading_;
};

}  // namespace

std::shared_ptr<const MendedText> MendBvh(std::shared_ptr<const BvhReading> reading) {
    return std::make_shared<MendedBvh>(std::move(reading));
}

}  // namespace survey
