#include "platform/store/engine/openserver.h"

namespace veldona::store {
namespace {

[[noreturn]] void refuse(const ServerPlace& place) {
    throw StoreError(StoreError::Kind::Other,
                     "Sunucudaki defter bu sürümle açılamaz: " + place.address.shown() + ".");
}

} // namespace

std::unique_ptr<Engine> openServerToWork(const ServerPlace& place, const Opening&, const Delivered&) {
    refuse(place);
}

std::unique_ptr<Engine> openServer(const ServerPlace& place, std::chrono::milliseconds, const Delivered&) {
    refuse(place);
}

std::unique_ptr<Engine> openServerToRead(const ServerPlace& place, std::chrono::milliseconds,
                                         const Delivered&) {
    refuse(place);
}

void createOnServer(const ServerPlace& place, const std::vector<TableDef>&,
                    const std::vector<SavedQueryDef>&) {
    refuse(place);
}

void removeFromServer(const ServerPlace& place) {
    refuse(place);
}

} // namespace veldona::store
