#pragma once

namespace Zelk::MATH {

struct CVector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// A transform that has only a translation, because the plug-in needs neither rotation nor scaling.
class CTransformation {
  public:
    void SetTranslationFromValues(double x, double y, double z) { translation_ = {x, y, z}; }
    const CVector3& GetTranslation() const { return translation_; }

  private:
    CVector3 translation_;
};

}  // namespace Zelk::MATH
