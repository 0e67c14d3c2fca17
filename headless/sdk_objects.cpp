// Implements the host's classes for references and for everything that has a name.
#include "headless/operations.h"
#include "headless/session_state.h"
#include "headless/text.h"
#include "host/object.h"
#include "host/scene_objects.h"

using headless::Editor;
using headless::Fails;
using headless::Operation;
using headless::Referent;

namespace Zelk {

bool CBase::IsValid() const {
    if (ref_.Object() == headless::kInterfaceId)
        return headless::SessionAccess::Current().interactive;
    return Editor().Resolve(ref_).kind != Referent::Kind::None;
}

CRef CRefArray::GetItem(const CString& name) const {
    if (Fails(Operation::GetItem)) return CRef();
    const headless::SceneEditor editor = Editor();
    for (const CRef& ref : refs_) {
        const Referent referent = editor.Resolve(ref);
        if (referent.kind == Referent::Kind::None) continue;
        if (editor.HasName(referent, headless::View(name))) return ref;
    }
    return CRef();
}

Model ProjectItem::GetModel() const {
    if (Fails(Operation::GetModel)) return Model();
    const headless::SceneEditor editor = Editor();
    const Referent referent = editor.Resolve(ref_);
    if (referent.kind == Referent::Kind::None) return Model();
    return Model(CRef(editor.ModelOf(*referent.object).id, headless::part::kSelf));
}

}  // namespace Zelk

Zelk::CString ZKObject::GetName() const {
    if (Fails(Operation::GetName)) return Zelk::CString();
    const headless::SceneEditor editor = Editor();
    return editor.NameOf(editor.Resolve(ref_));
}

void ZKObject::PutName(const Zelk::CString& name) {
    if (Fails(Operation::PutName)) return;
    headless::SceneEditor editor = Editor();
    editor.Rename(editor.Resolve(ref_), name);
}

Zelk::CString ZKObject::GetFullName() const {
    if (Fails(Operation::GetFullName)) return Zelk::CString();
    const headless::SceneEditor editor = Editor();
    return editor.FullNameOf(editor.Resolve(ref_));
}

ZKObject ZKObject::GetParent() const {
    if (Fails(Operation::GetParent)) return ZKObject();
    const headless::SceneEditor editor = Editor();
    return ZKObject(editor.ParentOf(ref_, editor.Resolve(ref_)));
}
