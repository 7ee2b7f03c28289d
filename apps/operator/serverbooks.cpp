#include "apps/operator/serverbooks.h"

#include <unistd.h>

#include <filesystem>
#include <iostream>

#include "platform/desktop/paths.h"
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

void ServerBooks::make(const std::string& booksPath) {
    remove();
    const std::string text = address_.text() + " options='-c search_path=" + nextSchema() + "'";
    const store::ServerPlace place(store::ServerAddress(text, address_.source()));
    store::createOnServer(place, schema::tables(), schema::savedQueries());
    place_ = place;
    file_ = store::ServerAddress::fileBeside(booksPath);
    writeTextFile(file_, text);
}

void ServerBooks::remove() {
    if (!place_) return;
    const store::ServerPlace made = *place_;
    place_.reset();
    std::error_code ignored; // it lies in the scenario's own folder
    std::filesystem::remove(file_, ignored);
    store::removeFromServer(made);
}

} // namespace veldona::console
