#include "survey/kept_text.h"

#include <utility>

namespace survey {
namespace {

class KeptText final : public MendedText {
  public:
    KeptText(std::string text, std::vector<LineMark> lines)
        : text_(std::move(text)), lines_(std::move(lines)) {}

    std::uint64_t LikelyBytes() const override { return text_.size(); }
    std::vector<LineMark> Write(text::ByteSink& out) const override {
        out.Write(text_);
        return lines_;
    }

  private:
    std::string text_;
    std::vector<LineMark> lines_;
};

}  // namespace

std::shared_ptr<const MendedText> KeepText(std::string text, std::vector<LineMark> lines) {
    return std::make_shared<KeptText>(std::move(text), std::move(lines));
}

}  // namespace survey
