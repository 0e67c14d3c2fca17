// Reserves, gives and frees names.
#include <algorithm>
#include <new>
#include <span>
#include <utility>

#include "headless/scene_editor.h"
#include "headless/text.h"

namespace headless {

namespace {

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

Zelk::CString OrDefault(const Zelk::CString& wanted, std::wstring_view defaultName) {
    return wanted.IsEmpty() ? Text(std::wstring(defaultName)) : wanted;
}

// A list of reserved names. The destructor frees them again unless Keep was called.
class Reservation {
  public:
    Reservation() = default;
    Reservation(const Reservation&) = delete;
    Reservation& operator=(const Reservation&) = delete;
    ~Reservation() {
        for (const auto& [table, name] : names_)
            Free(*table, name);
    }

    void Reserve(NameTable& table, const Zelk::CString& name, std::uint32_t id) {
        names_.emplace_back(&table, Zelk::CString());
        names_.back().second = table.Reserve(name, id);
    }
    void MoveLastOf(Reservation& other) {
        names_.push_back(std::move(other.names_.back()));
        other.names_.pop_back();
    }
    const Zelk::CString& Last() const { return names_.back().second; }
    void Keep() noexcept { names_.clear(); }

  private:
    static void Free(NameTable& table, const Zelk::CString& name) noexcept {
        try {
            if (!name.IsEmpty()) table.Free(name);
        } catch (const std::bad_alloc&) {
            // The name stays reserved. The only effect is that a later name gets a larger number.
        }
    }

    std::vector<std::pair<NameTable*, Zelk::CString>> names_;
};

// Reserves the same name in all tables, and returns it. The name is `wanted`, if no table has it.
// Otherwise a number is appended to `wanted`: the smallest one, counted from 1, that makes a name
// that no table has.
Zelk::CString ReserveInAll(std::span<NameTable* const> tables, const Zelk::CString& wanted,
                           std::uint32_t id) {
    if (tables.size() == 1) return tables.front()->Reserve(wanted, id);
    Reservation rejected;
    for (;;) {
        rejected.Reserve(*tables.front(), wanted, id);
        Zelk::CString name = rejected.Last();
        const auto holds = [&](const NameTable* table) { return table->Find(View(name)) != 0; };
        if (std::any_of(tables.begin() + 1, tables.end(), holds)) continue;

        Reservation reserved;
        reserved.MoveLastOf(rejected);
        for (NameTable* const table : tables.subspan(1))
            reserved.Reserve(*table, name, id);
        reserved.Keep();
        return name;
    }
}

template <class Item>
void RenameIn(NameTable& table, Item& item, std::wstring_view defaultName,
              const Zelk::CString& name) {
    table.Free(item.name);
    item.name = Zelk::CString();
    NameTable* const tables[] = {&table};
    item.name = ReserveInAll(tables, OrDefault(name, defaultName), item.id);
}

}  // namespace

// The tables in which the name of `object` is reserved while it is under `parent`. The name of a
// model must be unique in two or three tables. One is the table of the scene root; it has the names
// of all models. One is the table of the model that the object is under, unless that is the scene
// root. One is the model's own table. The name of any other object must be unique only in the table
// of the model that it is under.
std::vector<NameTable*> SceneEditor::TablesOf(Node& object, Node& parent) const {
    ModelData& around = *ModelOf(parent).modelData;
    if (object.type != ObjectType::Model) return {&around.objectNames};
    std::vector<NameTable*> tables{&records_.root.modelData->objectNames};
    if (&around != records_.root.modelData.get()) tables.push_back(&around.objectNames);
    tables.push_back(&object.modelData->objectNames);
    return tables;
}

void SceneEditor::GiveName(Node& object, Node& parent, const Zelk::CString& wanted) {
    object.name = ReserveInAll(TablesOf(object, parent),
                               OrDefault(wanted, DefaultName(object.type)), object.id);
    if (object.type == ObjectType::Model)
        records_.longestModelName =
            std::max<std::size_t>(records_.longestModelName, object.name.Length());
}

void SceneEditor::FreeName(Node& object) {
    if (object.name.IsEmpty()) return;
    for (NameTable* const table : TablesOf(object, ParentNode(object)))
        table->Free(object.name);
    object.name = Zelk::CString();
}

Zelk::CString SceneEditor::ReserveName(NameTable& table, const Zelk::CString& wanted,
                                       std::wstring_view defaultName, std::uint32_t id) {
    NameTable* const tables[] = {&table};
    return ReserveInAll(tables, OrDefault(wanted, defaultName), id);
}

void SceneEditor::Rename(const Referent& referent, const Zelk::CString& name) {
    switch (referent.kind) {
        case Referent::Kind::Object: {
            Node& object = *referent.object;
            if (&object == &records_.root) return;
            // The old name is freed first, so that the object can get the same name again, or the
            // same name without its number.
            FreeName(object);
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
            return;  // the names of the other kinds are fixed
    }
}

}  // namespace headless
