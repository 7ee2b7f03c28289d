#include "apps/operator/serverbooks.h"

#include <unistd.h>

#include <iostream>
#include <string>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/openserver.h"
#include "schema/tables.h"

namespace veldona::console {

namespace {

// Several consoles may work on one server, and one of them may make books several times.
std::string nextSchema() {
    static int made = 0;
    return "vorel_operator_" + std::to_string(getpid()) + '_' + std::to_string(++made);
}

} // namespace

ServerBooks::~ServerBooks() {
    try {
        remove();
    } catch (const store::StoreError& error) {
        std::cerr << "the books stay on the server: " << error.description() << '\n';
    }
}

void ServerBooks::make() {
    remove();
    const store::ServerPlace place{address_, nextSchema()};
    store::createOnServer(place, schema::tables(), schema::savedQueries());
    place_ = place;
}

void ServerBooks::remove() {
    if (!place_) return;
    const store::ServerPlace made = *place_;
    place_.reset();
    store::removeFromServer(made);
}

} // namespace veldona::console
