#pragma once

namespace Zelk::MATH {

struct CVector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

// A transform without rotation and scaling. The plug-in needs nothing but the translation.
class CTransformation {
  public:
    void SetTranslationFromValues(double x, double y, double z) { translation_ = {x, y, z}; }
    const CVector3& GetTranslation() const { return translation_; }

  private:
    CVector3 translation_;
};

}  // namespace Zelk::MATH
