#include "daybook/callnotes.h"

#include <algorithm>

#include "core/database.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using store::Statement;

constexpr const char* kColumns = "SELECT MUSTNO,TRH,ACIKLAMA,SOZ_TRH,SOZ_TUTAR FROM ARAMA_NOTU";
constexpr const char* kNewestFirst = "TRH DESC,ID DESC";

std::string quoted(const std::string& text) {
    return "'" + replaceAll(text, "'", "''") + "'";
}

// As the promise was written; how it went is asked of the payments.
CallNote noteIn(const Statement& row) {
    CallNote note;
    note.account = row.text(0);
    note.at = store::dateOfStored(row.text(1)).value_or(DateTime{});
    note.text = row.text(2);
    if (const auto day = store::dateOfStored(row.text(3)))
        note.promise = CallPromise{day->date(), StoredAmount::ofColumn(row.number(4))};
    return note;
}

StoredAmount paidBetween(adodb::Connection& books, const std::string& account, DateTime first,
                         DateTime last) {
    StoredAmount sum;
    const auto moment = [](DateTime at) { return "'" + toText(at) + "'"; };
    books.walk("SELECT ODMIKTAR FROM TAKSITODENEN WHERE MUSTNO=" + quoted(account) +
                   " AND ODTRH>=" + moment(first) + " AND ODTRH<=" + moment(last),
               [&](const Statement& row) { sum += StoredAmount::ofColumn(row.number(0)).rounded(); });
    return sum;
}

// A promise of no amount is kept by any payment.
void judge(adodb::Connection& books, const CallNote& note, CallPromise& promise, DateTime today) {
    const DateTime endOfDay = promise.day.plusSeconds(kSecondsADay - 1);
    const StoredAmount wanted = std::max(promise.amount, StoredAmount::ofLira(0.01));
    if (paidBetween(books, note.account, note.at, endOfDay) >= wanted)
        promise.state = CallPromise::State::Kept;
    else if (promise.day < today)
        promise.state = CallPromise::State::Broken;
}

} // namespace

std::vector<CallNote> callNotesOf(adodb::Connection& books, const std::string& account, DateTime today,
                                  std::size_t most) {
    std::vector<CallNote> notes;
    books.walk(std::string(kColumns) + " WHERE MUSTNO=" + quoted(account) + " ORDER BY " + kNewestFirst,
               [&](const Statement& row) {
                   if (notes.size() < most) notes.push_back(noteIn(row));
               });
    for (CallNote& note : notes)
        if (note.promise) judge(books, note, *note.promise, today);
    return notes;
}

std::vector<LastCall> lastCalls(adodb::Connection& books, DateTime today) {
    std::vector<LastCall> calls;
    std::vector<CallNote> promised; // the note of each promise, in the order of the calls
    books.walk(std::string(kColumns) + " WHERE MUSTNO IS NOT NULL ORDER BY MUSTNO," + kNewestFirst,
               [&](const Statement& row) {
                   CallNote note = noteIn(row);
                   const bool isNew = calls.empty() || !store::Alphabet::turkish().isSame(
                                                           calls.back().note.account, note.account);
                   if (isNew) calls.push_back({note, {}});
                   if (!note.promise || calls.back().promise) return;
                   calls.back().promise = note.promise;
                   promised.push_back(std::move(note));
               });
    auto note = promised.begin();
    for (LastCall& call : calls)
        if (call.promise) judge(books, *note++, *call.promise, today);
    return calls;
}

bool writeCallNote(Session& session, const CallNote& note) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Add;
    rec.Tablo = "ARAMA_NOTU";
    rec.add("MUSTNO", note.account);
    rec.add("TRH", note.at);
    rec.add("ACIKLAMA", note.text);
    rec.add("SOZ_TRH", note.promise ? Value(note.promise->day) : Value());
    rec.add("SOZ_TUTAR", note.promise ? Value(note.promise->amount.column()) : Value());
    rec.add("KONTROL_KIM", trim(session.gKullanici));
    rec.add("KONTROL_NE_ZAMAN", session.desktop.clock.now());
    return KayitYaz(session, rec);
}

const char* nameOf(CallPromise::State state) {
    switch (state) {
    case CallPromise::State::Kept:
        return "Tutuldu";
    case CallPromise::State::Broken:
        return "Tutulmadı";
    case CallPromise::State::Open:
        break;
    }
    return "Bekleniyor";
}

} // namespace veldona
