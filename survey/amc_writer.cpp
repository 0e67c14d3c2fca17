#include "survey/amc_writer.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include "survey/acclaim_rotations.h"
#include "survey/amc_rate.h"
#include "survey/amc_scan.h"
#include "survey/asf_writer.h"
#include "survey/marked_text.h"

namespace survey {
namespace {

class Writer {
  public:
    Writer(const AsfSkeleton& skeleton, const SourceText& source, AmcMotion& motion)
        : skeleton_(skeleton),
          motion_(motion),
          source_(source),
          out_(source),
          text_(out_.text),
          bones_(skeleton),
          reader_(source.Text(), bones_),
          scale_(RadiansPerUnit(motion.header.degrees.value_or(skeleton.degrees)) /
                 RadiansPerUnit(skeleton.degrees)) {}

    std::shared_ptr<const MendedText> Write(Purpose purpose) {
        out_.Mark(source_.Text().data());
        const std::string rate = WrittenRate(motion_.header, purpose);
        if (!rate.empty()) text_ += ":SAMPLES-PER-SECOND " + rate + '\n';
        text_ += ":FULLY-SPECIFIED\n";
        text_ += skeleton_.degrees ? ":DEGREES\n" : ":RADIANS\n";
        text_.reserve(source_.Text().size() + source_.Text().size() / 8);
        WriteFrames();
        return out_.Finish();
    }

  private:
    void WriteFrames() {
        FrameNumbers::Rewriter numbers(motion_.numbers);
        AmcScan scan(source_.Text());
        // Start of the previous frame in the text if that frame was copied without reading its
        // values; null if its values were read.
        const char* held = nullptr;
        for (const char* at = motion_.header.frames; at < motion_.end;) {
            std::uint32_t number = 0;
            const char* const end = scan.HasLearned() ? scan.MatchFrame(at, number) : nullptr;
            out_.Mark(at);
            if (end) {
                CopyFrame(at, end, numbers.Next(number));
                held = at;
                at = end;
                continue;
            }
            if (held) ReadFrame(held);
            held = nullptr;
            ReadFrame(at);
            text_ += std::to_string(
                numbers.Next(frame_.hasNumber ? std::optional(frame_.number) : std::nullopt));
            text_ += '\n';
            for (const std::uint32_t bone : motion_.values.Order())
                WriteRow(bone);
            if (!scan.HasLearned() && IsAsWritten()) scan.Learn(frame_);
            at = frame_.end;
        }
    }

    void ReadFrame(const char* at) {
        reader_.Read(at, frame_);
        motion_.values.Apply(frame_, events_);
    }

    // Whether the rows of `frame_` are in the file as they are to be written.
    bool IsAsWritten() const {
        const auto& order = motion_.values.Order();
        if (!events_.empty() || frame_.isOdd || scale_ != 1.0) return false;
        return std::equal(frame_.rows.begin(), frame_.rows.end(), order.begin(), order.end(),
                          [&](const AmcRow& row, std::uint32_t index) {
                              const AsfBone& bone = skeleton_.bones[index];
                              return row.bone == index && row.name == bone.name &&
                                     !bone.IsRewritten() && row.count == bone.dof.size();
                          });
    }

    // Writes the frame's new number, and copies its rows without carriage returns.
    void CopyFrame(const char* at, const char* end, std::int64_t number) {
        text_ += std::to_string(number);
        at = std::find(at, end, '\n');
        while (IsWhite(end[-1]))
            --end;
        if (std::memchr(at, '\r', static_cast<std::size_t>(end - at)) == nullptr)
            text_.append(at, end);
        else
            std::remove_copy(at, end, std::back_inserter(text_), '\r');
        text_ += '\n';
    }

    void WriteRow(std::uint32_t index) {
        const AsfBone& bone = skeleton_.bones[index];
        const std::size_t before = text_.size();
        text_ += bone.name;
        const std::size_t named = text_.size();
        const auto values = motion_.values.Of(index);
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (bone.IsLeftOut(bone.dof[i])) continue;
            text_ += ' ';
            const double scale = IsRotation(bone.dof[i])      ? scale_
                                 : bone.dof[i] == Dof::Length ? bone.lengthScale
                                                              : 1.0;
            if (scale != 1.0)
                AppendNumber(text_, {values[i].value * scale, {}});
            else
                AppendWord(values[i]);
        }
        if (text_.size() == named)
            text_.resize(before);
        else
            text_ += '\n';
    }

    void AppendWord(const AsfNumber& number) {
        const std::size_t first = text_.size();
        AppendNumber(text_, number);
        std::replace(text_.begin() + static_cast<std::ptrdiff_t>(first), text_.end(), ',', '.');
    }

    const AsfSkeleton& skeleton_;
    AmcMotion& motion_;
    const SourceText& source_;
    MarkedText out_;
    std::string& text_;
    AmcBones bones_;
    AmcFrameReader reader_;
    double scale_;  // factor that converts angles to the skeleton's unit
    AmcFrame frame_;
    std::vector<AmcEvent> events_;
};

}  // namespace

std::shared_ptr<const MendedText> WriteAmc(const AsfSkeleton& skeleton, Purpose purpose,
                                           const SourceText& source, AmcMotion& motion) {
    return Writer(skeleton, source, motion).Write(purpose);
}

}  // namespace survey
