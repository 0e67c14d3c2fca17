// The importer with its inside in the open, fed with text.
#pragma once

#include <cstdint>
#include <string>

#include "bvh/biovision_import.h"
#include "headless/scene.h"
#include "headless/session.h"
#include "tests/support/core/session_text.h"
#include "tests/support/temp_dir.h"

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

class Importer : public CBiovisionImport {
  public:
    using CBiovisionImport::Clear;
    using CBiovisionImport::CreateZelkEntities;
    using CBiovisionImport::ParseBVH;
    using CBiovisionImport::ParseMotion;
    using CMocapImportBase::channelCount;
    using CMocapImportBase::frameCount;
    using CMocapImportBase::lastBasePose;
    using CMocapImportBase::lastModel;
    using CMocapImportBase::lastMotion;
    using CMocapImportBase::modelName;
    using CMocapImportBase::models;
    using CMocapImportBase::progressBar;
    using CMocapImportBase::stringFile;

    explicit Importer(const Options& options = {}) {
        SetOptions(options.nulls, options.chainFromParent, options.effectorToLastBone,
                   options.group);
    }

    // The whole import of these bytes as a model called "walk".
    std::int32_t Import(const std::string& bytes) {
        const support::TempDir dir;
        return ImportFile(dir.Write("walk.bvh", bytes));
    }
    std::int32_t ImportFile(const std::string& path) {
        return ImportBVH(Wide(path).c_str(), L"walk").GetCode();
    }

    // The parser alone, from behind the first token; nodes and keys stay.
    std::int32_t Parse(const std::string& bytes) {
        const support::TempDir dir;
        Clear(true);
        CIFPlugProgressBar bar;
        progressBar = &bar;
        stringFile.ReadFile(Wide(dir.Write("parsed.bvh", bytes)).c_str());
        stringFile.GetNextString();
        const std::int32_t status = ParseBVH(nullptr);
        progressBar = nullptr;
        return status;
    }

    std::string Message() const { return support::Utf8(GetLastError(nullptr, nullptr)); }
    std::uint32_t Line() const {
        std::uint32_t line = 0;
        GetLastError(&line, nullptr);
        return line;
    }
    MOCAPMODEL& Node(std::size_t index) { return *models.at(index); }
    std::string Name(std::size_t index) { return Node(index).name.get(); }
};

inline const headless::Scene& Scene() {
    return headless::Session::Current().GetScene();
}

// The object of that name anywhere below the model; null without one.
inline const headless::Object* Find(const headless::Object& model, const std::string& name) {
    for (const headless::Object* object : Scene().Objects())
        if (object->model == &model && support::Utf8(object->name) == name) return object;
    return nullptr;
}

// What a file can be worth: both ways to build a skeleton, and the variants of bones.
inline constexpr Options kAllOptions[] = {
    {true, true, false, true},   {false, true, false, true}, {false, true, true, true},
    {false, false, false, true}, {false, false, true, true}, {false, true, false, false},
};

}  // namespace bvh_test
