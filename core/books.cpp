#include "core/books.h"

#include "core/bookpasswords.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/openplace.h"
#include "schema/tables.h"

namespace veldona {
namespace {

// `open` by the first of the known passwords that fits.
template <class Open> OpenedBooks openByKnown(Open open) {
    const std::vector<Secret> known = passwords::known();
    for (std::size_t i = 0;; ++i) {
        try {
            return {open(known[i].text()), known[i]};
        } catch (const store::StoreError& failure) {
            if (failure.kind() != store::StoreError::Kind::WrongPassword || i + 1 == known.size()) throw;
        }
    }
}

} // namespace

std::unique_ptr<store::Engine> openBooks(const store::Place& place, std::chrono::milliseconds wait) {
    return openByKnown([&](std::string_view password) {
               return store::open(place, password, wait, schema::delivered());
           })
        .engine;
}

std::unique_ptr<store::Engine> openBooksToRead(const store::Place& place, std::chrono::milliseconds wait) {
    return openBooksToReadBy(place, wait).engine;
}

OpenedBooks openBooksToReadBy(const store::Place& place, std::chrono::milliseconds wait) {
    return openByKnown([&](std::string_view password) {
        return store::openToRead(place, password, wait, schema::delivered());
    });
}

std::unique_ptr<store::Engine> openBooks(const std::string& nativePath, std::chrono::milliseconds wait) {
    return openBooks(store::FilePlace{nativePath}, wait);
}

std::unique_ptr<store::Engine> openBooksToRead(const std::string& nativePath,
                                               std::chrono::milliseconds wait) {
    return openBooksToRead(store::FilePlace{nativePath}, wait);
}

std::unique_ptr<store::Engine> openBooksAlone(const std::string& nativePath) {
    return openBooksAloneBy(nativePath).engine;
}

OpenedBooks openBooksAloneBy(const std::string& nativePath) {
    return openByKnown([&](std::string_view password) {
        return store::openFileAlone(nativePath, password, schema::delivered());
    });
}

void renewBooks(const std::string& nativePath) {
    static_cast<void>(openByKnown([&](std::string_view password) {
        const store::Opening alone{
            .wait = std::chrono::seconds(1), .clock = {}, .lockWait = {}, .keepsFormer = false};
        return store::openFileToWork(nativePath, password, alone, schema::delivered());
    }));
}

void settleBooks(const std::string& nativePath) {
    static_cast<void>(openByKnown([&](std::string_view password) {
        store::settleFile(nativePath, password);
        return std::unique_ptr<store::Engine>();
    }));
}

} // namespace veldona
