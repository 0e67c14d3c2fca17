// Imports BVH texts and looks at the scene afterwards.
#pragma once

#include <cstdint>
#include <string>

#include "bvh/biovision_import.h"
#include "headless/scene.h"
#include "headless/session.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temporary_folder.h"

namespace bvh_test {

struct Options {
    bool nulls = true;
    bool chainFromParent = true;
    bool effectorToLastBone = false;
    bool group = true;
};

inline std::wstring Wide(const std::string& ascii) {
    return std::wstring(ascii.begin(), ascii.end());
}

// A BVH importer that imports texts.
class Importer {
  public:
    explicit Importer(const Options& options = {}) {
        importer_.SetOptions(options.nulls, options.chainFromParent, options.effectorToLastBone,
                             options.group);
    }

    // Imports a file with these bytes as a model called "walk". Returns the status.
    std::int32_t Import(const std::string& bytes) {
        // One for all imports of the process: making and removing files takes longer than an
        // import.
        static const support::TemporaryFolder dir;
        return ImportFile(dir.Write("walk.bvh", bytes));
    }
    std::int32_t ImportFile(const std::string& path) {
        return ImportBVH(Wide(path).c_str(), L"walk").GetCode();
    }
    Zelk::CStatus ImportBVH(const Zelk::CString& file, const Zelk::CString& name) {
        return importer_.ImportBVH(file, name);
    }

    std::string Message() const { return support::Utf8(importer_.GetLastError(nullptr, nullptr)); }
    std::uint32_t Line() const {
        std::uint32_t line = 0;
        importer_.GetLastError(&line, nullptr);
        return line;
    }
    std::uint32_t Column() const {
        std::uint32_t column = 0;
        importer_.GetLastError(nullptr, &column);
        return column;
    }
    bool WasParsing() const { return importer_.WasParsing(); }
    std::uint32_t GetModelsCount() const { return importer_.GetModelsCount(); }
    Zelk::Model GetLastModel() const { return importer_.GetLastModel(); }
    Zelk::ActionSource GetLastBasePose() const { return importer_.GetLastBasePose(); }
    Zelk::ActionSource GetLastMotion() const { return importer_.GetLastMotion(); }
    const auto& Nodes() const { return importer_.GetSkeleton().models; }

  private:
    CBiovisionImport importer_;
};

inline const headless::Scene& Scene() {
    return headless::Session::Current().GetScene();
}

// Returns the object of the model that has this name, or null.
inline const headless::Object* Find(const headless::Object& model, const std::string& name) {
    for (const headless::Object* object : Scene().Objects())
        if (object->model == &model && support::Utf8(object->name) == name) return object;
    return nullptr;
}

// Nulls, and bones with all combinations of the two chain options; the last makes no group.
inline constexpr Options kAllOptions[] = {
    {true, true, false, true},   {false, true, false, true}, {false, true, true, true},
    {false, false, false, true}, {false, false, true, true}, {false, true, false, false},
};

}  // namespace bvh_test
