#include "core/books.h"

#include "core/delivered.h"
#include "platform/store/engine/openplace.h"
#include "schema/tables.h"

namespace veldona {

std::unique_ptr<store::Engine> openBooks(const store::Place& place, std::chrono::milliseconds wait) {
    return store::open(place, kDeliveredPassword, wait, schema::delivered());
}

std::unique_ptr<store::Engine> openBooksToRead(const store::Place& place, std::chrono::milliseconds wait) {
    return store::openToRead(place, kDeliveredPassword, wait, schema::delivered());
}

std::unique_ptr<store::Engine> openBooks(const std::string& nativePath, std::chrono::milliseconds wait) {
    return store::openFile(nativePath, kDeliveredPassword, wait, schema::delivered());
}

std::unique_ptr<store::Engine> openBooksToRead(const std::string& nativePath,
                                               std::chrono::milliseconds wait) {
    return store::openFileToRead(nativePath, kDeliveredPassword, wait, schema::delivered());
}

std::unique_ptr<store::Engine> openBooksAlone(const std::string& nativePath) {
    return store::openFileAlone(nativePath, kDeliveredPassword, schema::delivered());
}

} // namespace veldona
