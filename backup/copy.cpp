#include "backup/copy.h"

#include <chrono>

#include "backup/place.h"
#include "backup/proof.h"
#include "core/books.h"
#include "core/session.h"
#include "platform/store/engine/draft.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/tablerows.h"
#include "schema/tables.h"

namespace veldona::backup {
namespace {

constexpr std::chrono::seconds kWait(15); // for another workstation's lock

Picture copyAsItStands(const std::string& books, const std::string& file) {
    const store::Place place = store::placeOf(books);
    const auto original = openBooksToRead(place, kWait);
    original->beginReading();
    Picture picture = pictureOf(*original);
    const auto copy = store::createFile(file, kDeliveredPassword);
    if (std::holds_alternative<store::FilePlace>(place)) {
        original->copyInto(*copy);
    } else {
        copy->define(schema::tables(), schema::savedQueries());
        store::copyRows(*original, *copy);
    }
    return picture;
}

} // namespace

Picture copyToDraft(const std::string& books, const std::string& draft) {
    const Picture picture = copyAsItStands(books, draft);
    syncFile(draft);
    requireProved(draft, picture);
    return picture;
}

Picture copyBooks(const std::string& books, const std::string& file) {
    const store::Draft draft(file + ".yarim");
    const Picture picture = copyToDraft(books, draft.path());
    giveName(draft.path(), file, picture);
    return picture;
}

} // namespace veldona::backup
