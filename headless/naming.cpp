// Names: taken, given, released.
#include <algorithm>
#include <new>
#include <span>
#include <utility>

#include "headless/scene_editor.h"
#include "headless/text.h"

namespace headless {

namespace {

// What an object without a wish is called.
std::wstring_view DefaultName(ObjectType type) {
    switch (type) {
        case ObjectType::Model:
            return L"Model";
        case ObjectType::Null:
            return L"Null";
        case ObjectType::ChainRoot:
            return L"Root";
        case ObjectType::ChainBone:
            return L"Bone";
        case ObjectType::ChainEffector:
            return L"Effector";
    }
    return L"Object";
}

Zelk::CString Wish(const Zelk::CString& wanted, std::wstring_view otherwise) {
    return wanted.IsEmpty() ? Text(std::wstring(otherwise)) : wanted;
}

// Names that are given back unless they are kept.
class Reservation {
  public:
    Reservation() = default;
    Reservation(const Reservation&) = delete;
    Reservation& operator=(const Reservation&) = delete;
    ~Reservation() {
        for (const auto& [table, name] : names_)
            Release(*table, name);
    }

    void Take(NameTable& table, const Zelk::CString& name, std::uint32_t id) {
        names_.emplace_back(&table, Zelk::CString());
        names_.back().second = table.Take(name, id);
    }
    void MoveLastOf(Reservation& other) {
        names_.push_back(std::move(other.names_.back()));
        other.names_.pop_back();
    }
    const Zelk::CString& Last() const { return names_.back().second; }
    void Keep() noexcept { names_.clear(); }

  private:
    static void Release(NameTable& table, const Zelk::CString& name) noexcept {
        try {
            if (!name.IsEmpty()) table.Free(name);
        } catch (const std::bad_alloc&) {
            // The name stays taken: a number is passed over later, nothing worse.
        }
    }

    std::vector<std::pair<NameTable*, Zelk::CString>> names_;
};

// One name that is free in all tables, the smallest number that makes it so appended; taken in all.
Zelk::CString TakeInAll(std::span<NameTable* const> tables, const Zelk::CString& wish,
                        std::uint32_t id) {
    if (tables.size() == 1) return tables.front()->Take(wish, id);
    Reservation refused;
    for (;;) {
        refused.Take(*tables.front(), wish, id);
        Zelk::CString name = refused.Last();
        const auto holds = [&](const NameTable* table) { return table->Find(View(name)) != 0; };
        if (std::any_of(tables.begin() + 1, tables.end(), holds)) continue;

        Reservation taken;
        taken.MoveLastOf(refused);
        for (NameTable* const table : tables.subspan(1))
            taken.Take(*table, name, id);
        taken.Keep();
        return name;
    }
}

template <class Item>
void RenameIn(NameTable& table, Item& item, std::wstring_view otherwise,
              const Zelk::CString& name) {
    table.Free(item.name);
    item.name = Zelk::CString();
    NameTable* const tables[] = {&table};
    item.name = TakeInAll(tables, Wish(name, otherwise), item.id);
}

}  // namespace

// A model's name is unique in the scene, in the model above it and among the objects of its own.
std::vector<NameTable*> SceneEditor::TablesOf(Node& object, Node& parent) const {
    ModelData& around = *ModelOf(parent).modelData;
    if (object.type != ObjectType::Model) return {&around.objectNames};
    std::vector<NameTable*> tables{&records_.root.modelData->objectNames};
    if (&around != records_.root.modelData.get()) tables.push_back(&around.objectNames);
    tables.push_back(&object.modelData->objectNames);
    return tables;
}

void SceneEditor::GiveName(Node& object, Node& parent, const Zelk::CString& wanted) {
    object.name =
        TakeInAll(TablesOf(object, parent), Wish(wanted, DefaultName(object.type)), object.id);
    if (object.type == ObjectType::Model)
        records_.longestModelName =
            std::max<std::size_t>(records_.longestModelName, object.name.Length());
}

void SceneEditor::ReleaseName(Node& object) {
    if (object.name.IsEmpty()) return;
    for (NameTable* const table : TablesOf(object, ParentNode(object)))
        table->Free(object.name);
    object.name = Zelk::CString();
}

Zelk::CString SceneEditor::TakeName(NameTable& table, const Zelk::CString& wanted,
                                    std::wstring_view otherwise, std::uint32_t id) {
    NameTable* const tables[] = {&table};
    return TakeInAll(tables, Wish(wanted, otherwise), id);
}

void SceneEditor::Rename(const Referent& referent, const Zelk::CString& name) {
    switch (referent.kind) {
        case Referent::Kind::Object: {
            Node& object = *referent.object;
            if (&object == &records_.root) return;
            // The old name first, so that an object can be given its own name or a shorter form of
            // it.
            ReleaseName(object);
            GiveName(object, ParentNode(object), name);
            return;
        }
        case Referent::Kind::Action:
            return RenameIn(referent.object->modelData->actionNames, *referent.action, kActionName,
                            name);
        case Referent::Kind::Group:
            return RenameIn(referent.object->modelData->groupNames, *referent.group, kGroupName,
                            name);
        case Referent::Kind::Property:
            RenameIn(referent.object->propertyData->names, *referent.property, kPropertyName, name);
            records_.longestPropertyName = std::max<std::size_t>(records_.longestPropertyName,
                                                                 referent.property->name.Length());
            return;
        default:
            return;  // what the host names itself keeps its name
    }
}

}  // namespace headless
