#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/names.h"

namespace veldona::store {

void Catalog::add(Relation relation) {
    relations_.push_back(std::move(relation));
}

const Catalog::Relation* Catalog::find(std::string_view name) const {
    for (const Relation& relation : relations_) {
        if (sameName(relation.name, name)) return &relation;
    }
    return nullptr;
}

} // namespace veldona::store
