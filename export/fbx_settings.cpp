#include "export/fbx_settings.h"

#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "export/fbx_objects.h"
#include "export/provenance.h"

namespace exporters {
namespace {

using namespace std::string_view_literals;

// The rate has no number of its own in FBX.
constexpr std::int32_t kCustomRate = 14;

// Returns the number that FBX gives to a rate. Some readers do not know the numbers of fractional
// rates, so these count as rates of their own.
std::int32_t TimeModeOf(double framesPerSecond) {
    static constexpr std::pair<double, std::int32_t> kModes[] = {
        {120.0, 1}, {100.0, 2}, {60.0, 3}, {50.0, 4}, {48.0, 5}, {30.0, 6}, {25.0, 10}, {24.0, 11}};
    for (const auto& [rate, mode] : kModes)
        if (rate == framesPerSecond) return mode;
    return kCustomRate;
}

void AddInteger(FbxNode& properties, std::string_view name, std::int32_t value) {
    AddFbxProperty(properties, name, "int", "Integer").Int(value);
}
void AddNumber(FbxNode& properties, std::string_view name, double value) {
    AddFbxProperty(properties, name, "double", "Number").Double(value);
}
void AddString(FbxNode& properties, std::string_view name, std::string_view value) {
    AddFbxProperty(properties, name, "KString").Text(value);
}

void AddTimeStamp(FbxNode& header) {
    FbxNode& stamp = header.Add("CreationTimeStamp");
    stamp.AddInt("Version", 1000);
    // The time that FbxFile::AddIdentity states as text.
    for (const auto& [name, value] :
         std::initializer_list<std::pair<std::string_view, std::int32_t>>{{"Year", 1970},
                                                                          {"Month", 1},
                                                                          {"Day", 1},
                                                                          {"Hour", 10},
                                                                          {"Minute", 0},
                                                                          {"Second", 0},
                                                                          {"Millisecond", 0}})
        stamp.AddInt(name, value);
}

void AddSceneInfo(FbxNode& header, const Options& options) {
    const nlohmann::json provenance = ProvenanceJson(options);
    FbxNode& info = header.Add("SceneInfo").Text("GlobalInfo\0\1SceneInfo"sv).Text("UserData");
    info.AddText("Type", "UserData");
    info.AddInt("Version", 100);
    FbxNode& data = info.Add("MetaData");
    data.AddInt("Version", 100);
    const std::string title = options.source.files.empty()
                                  ? std::string()
                                  : provenance["sourceFiles"].back().get<std::string>();
    data.AddText("Title", title);
    for (const char* const name : {"Subject", "Author", "Keywords", "Revision"})
        data.AddText(name, "");
    data.AddText("Comment", provenance.dump());
    FbxNode& properties = info.Add("Properties70");
    for (const std::string group : {"Original", "LastSaved"}) {
        AddFbxProperty(properties, group, "Compound");
        AddString(properties, group + "|ApplicationName", options.source.tool);
    }
}

// The values that objects have unless they say something else. Readers know them; they are here for
// programs that list the properties of a type.
void AddTemplate(FbxNode& type, std::string_view name) {
    FbxNode& entry = type.Add("PropertyTemplate").Text(name);
    FbxNode& properties = entry.Add("Properties70");
    if (name == "FbxNode") {
        AddFbxProperty(properties, "RotationOrder", "enum").Int(0);
        AddFbxVector(properties, "Lcl Translation", "Lcl Translation", "A", {0.0, 0.0, 0.0});
        AddFbxVector(properties, "Lcl Rotation", "Lcl Rotation", "A", {0.0, 0.0, 0.0});
        AddFbxVector(properties, "Lcl Scaling", "Lcl Scaling", "A", {1.0, 1.0, 1.0});
        AddFbxProperty(properties, "Visibility", "Visibility", "", "A").Double(1.0);
    } else if (name == "FbxAnimStack") {
        AddString(properties, "Description", "");
        for (const char* const time :
             {"LocalStart", "LocalStop", "ReferenceStart", "ReferenceStop"})
            AddFbxTime(properties, time, 0);
    } else if (name == "FbxAnimLayer") {
        AddFbxProperty(properties, "Weight", "Number", "", "A").Double(100.0);
    } else if (name == "FbxAnimCurveNode") {
        AddFbxProperty(properties, "d", "Compound");
    } else if (name == "FbxSurfaceLambert") {
        AddFbxVector(properties, "DiffuseColor", "Color", "A", {0.8, 0.8, 0.8});
        AddFbxProperty(properties, "DiffuseFactor", "Number", "", "A").Double(1.0);
    } else {
        properties.CloseList();
    }
}

}  // namespace

void AddFbxHeader(FbxFile& file, const Options& options) {
    FbxNode& header = file.Add("FBXHeaderExtension");
    header.AddInt("FBXHeaderVersion", 1003);
    header.AddInt("FBXVersion", 7500);
    header.AddInt("EncryptionType", 0);
    AddTimeStamp(header);
    header.AddText("Creator", options.source.tool);
    AddSceneInfo(header, options);
    file.AddIdentity(options.source.tool);
}

void AddFbxSettings(FbxNode& globalSettings, const FbxSettings& settings) {
    globalSettings.AddInt("Version", 1000);
    FbxNode& properties = globalSettings.Add("Properties70");
    // The y axis points up, the z axis to the viewer, and the x axis to the right.
    AddInteger(properties, "UpAxis", 1);
    AddInteger(properties, "UpAxisSign", 1);
    AddInteger(properties, "FrontAxis", 2);
    AddInteger(properties, "FrontAxisSign", 1);
    AddInteger(properties, "CoordAxis", 0);
    AddInteger(properties, "CoordAxisSign", 1);
    AddInteger(properties, "OriginalUpAxis", 1);
    AddInteger(properties, "OriginalUpAxisSign", 1);
    AddNumber(properties, "UnitScaleFactor", settings.centimetresPerUnit);
    AddNumber(properties, "OriginalUnitScaleFactor", settings.centimetresPerUnit);
    if (settings.framesPerSecond > 0.0) {
        const std::int32_t mode = TimeModeOf(settings.framesPerSecond);
        AddFbxProperty(properties, "TimeMode", "enum").Int(mode);
        AddFbxTime(properties, "TimeSpanStart", 0);
        AddFbxTime(properties, "TimeSpanStop", settings.stop);
        AddNumber(properties, "CustomFrameRate", settings.framesPerSecond);
    }
}

void AddFbxDocuments(FbxNode& documents, const std::vector<FbxTake>& takes) {
    documents.AddInt("Count", 1);
    // The number is no object's, and it is the same in all files.
    constexpr std::int64_t kDocument = 1'000'000'000;
    FbxNode& document = documents.Add("Document").Long(kDocument).Text("Scene").Text("Scene");
    FbxNode& properties = document.Add("Properties70");
    AddFbxProperty(properties, "SourceObject", "object");
    if (!takes.empty()) AddString(properties, "ActiveAnimStackName", takes.front().name);
    document.Add("RootNode").Long(0);
}

void AddFbxDefinitions(FbxNode& definitions, const std::map<std::string, std::int32_t>& counts) {
    static constexpr std::pair<std::string_view, std::string_view> kTemplates[] = {
        {"Model", "FbxNode"},
        {"Geometry", "FbxMesh"},
        {"Material", "FbxSurfaceLambert"},
        {"AnimationStack", "FbxAnimStack"},
        {"AnimationLayer", "FbxAnimLayer"},
        {"AnimationCurveNode", "FbxAnimCurveNode"}};
    std::int32_t all = 1;
    for (const auto& [type, count] : counts)
        all += count;
    definitions.AddInt("Version", 100);
    definitions.AddInt("Count", all);
    definitions.Add("ObjectType").Text("GlobalSettings").AddInt("Count", 1);
    for (const auto& [type, count] : counts) {
        FbxNode& entry = definitions.Add("ObjectType").Text(type);
        entry.AddInt("Count", count);
        for (const auto& [owner, name] : kTemplates)
            if (owner == type) AddTemplate(entry, name);
    }
}

void AddFbxTakes(FbxNode& list, const std::vector<FbxTake>& takes) {
    list.AddText("Current", takes.empty() ? "" : takes.front().name);
    for (const FbxTake& take : takes) {
        FbxNode& entry = list.Add("Take").Text(take.name);
        entry.AddText("FileName", take.name + ".tak");
        entry.Add("LocalTime").Long(0).Long(take.stop);
        entry.Add("ReferenceTime").Long(0).Long(take.stop);
    }
}

}  // namespace exporters
