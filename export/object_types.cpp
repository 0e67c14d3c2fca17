#include "export/object_types.h"

namespace exporters {

std::string_view TypeName(headless::ObjectType type) {
    using headless::ObjectType;
    switch (type) {
        case ObjectType::Model:
            return "Model";
        case ObjectType::Null:
            return "Null";
        case ObjectType::ChainRoot:
            return "ChainRoot";
        case ObjectType::ChainBone:
            return "ChainBone";
        case ObjectType::ChainEffector:
            return "ChainEffector";
    }
    return {};
}

}  // namespace exporters
