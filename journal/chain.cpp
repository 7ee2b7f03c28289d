#include "journal/chain.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <map>
#include <utility>

#include "journal/captions.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/tablerows.h"

namespace veldona::journal {
namespace {

using store::kSealedColumns;

enum Column { Id = 0, Moment = 2, OfTable = 8, Kind = 9, Key = 10, Before = 11, After = 12, Seal = 13 };

struct Entry {
    std::int64_t id = 0;
    std::array<std::optional<std::string>, kSealedColumns.size()> values;
    std::string seal;

    [[nodiscard]] std::string moment() const { return values[Moment].value_or(""); }
    [[nodiscard]] std::string sealBehind(const std::string& before, store::JournalKey& key) const {
        store::JournalKey::Values views;
        std::ranges::copy(values, views.begin());
        return key.seal(before, views);
    }
};

std::optional<std::string> textIn(const store::Statement& row, int column) {
    switch (row.storage(column)) {
    case store::Statement::Storage::Null:
        return std::nullopt;
    case store::Statement::Storage::Whole:
        return std::to_string(row.whole(column));
    default:
        return std::string(row.text(column));
    }
}

Entry read(const store::TableRows& rows) {
    Entry entry;
    entry.id = rows.id();
    for (std::size_t i = 0; i < entry.values.size(); ++i)
        entry.values[i] = textIn(rows.row(), static_cast<int>(i));
    entry.seal = textIn(rows.row(), Seal).value_or("");
    return entry;
}

// A member of a note's object: ours are flat, and hold no quote.
std::string memberOf(const std::string& note, const std::string& name) {
    const std::string before = '"' + name + "\":";
    std::size_t begin = note.find(before);
    if (begin == note.npos) return {};
    begin += before.size();
    if (note[begin] == '"') return note.substr(begin + 1, note.find('"', begin + 1) - begin - 1);
    return note.substr(begin, note.find_first_of(",}", begin) - begin);
}

std::int64_t wholeOf(std::string_view digits) {
    std::int64_t whole = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    return whole;
}

// The seals of the last entries that were taken out, by their numbers.
std::map<std::int64_t, std::string> anchorsOf(const store::Inquiry& books) {
    std::map<std::int64_t, std::string> anchors;
    const auto notes = books.prepare("SELECT YENI FROM GUNLUK WHERE TUR = 'N'");
    while (notes->step())
        if (const std::string note(notes->text(0)); memberOf(note, "NE") == "incelt")
            anchors[wholeOf(memberOf(note, "SON"))] = memberOf(note, "OZET");
    return anchors;
}

class Walk {
public:
    Walk(const store::Inquiry& books, const std::string& key, const std::vector<Seen>& seen, ToldRows* rows)
        : books_(books), key_(key), seen_(seen), rows_(rows) {}

    Chain chain() {
        const store::Catalog::Relation& table = *books_.catalog().find(store::kJournalTable);
        for (store::TableRows rows(books_, table); !chain_.broken && rows.next();)
            take(read(rows));
        if (suspect_) breaks(Breach::Inserted, *suspect_);
        if (!chain_.broken) lookBehind();
        return std::move(chain_);
    }

private:
    void take(const Entry& entry) {
        if (suspect_) return judgeSuspect(entry);
        if (chain_.entries == 0) begin(entry);
        if (chain_.broken) return;
        if (entry.id != chain_.last + 1 && chain_.last != 0) {
            chain_.broken = {Breach::Removed, chain_.last + 1, chain_.moment};
            return;
        }
        if (entry.sealBehind(chain_.seal, key_) == entry.seal)
            follow(entry);
        else
            suspect_ = entry;
    }

    // What stood before the first one: nothing, or what was taken out by the program, which a note holds.
    void begin(const Entry& entry) {
        chain_.first = entry.id;
        chain_.since = entry.moment();
        if (entry.id < 1) return breaks(Breach::Inserted, entry);
        if (entry.id == 1) return;
        const auto anchors = anchorsOf(books_);
        const auto behind = anchors.lower_bound(entry.id); // the newest before it is the one in front
        const std::int64_t last = behind == anchors.begin() ? 0 : std::prev(behind)->first;
        if (last == entry.id - 1)
            chain_.seal = std::prev(behind)->second;
        else
            chain_.broken = {Breach::Removed, last + 1, {}};
    }

    void follow(const Entry& entry) {
        ++chain_.entries;
        if (rows_ != nullptr) tellRows(entry);
        chain_.last = entry.id;
        chain_.seal = entry.seal;
        const std::string before = std::exchange(chain_.moment, entry.moment());
        for (const Seen& each : seen_)
            if (each.id == entry.id && each.seal == entry.seal) isMet_[each.id] = true;
        if (chain_.entries != 1 && entry.values[Kind] != store::kNoted) return;
        const std::string whole = entry.values[Kind] == store::kNoted ? entry.values[After].value_or("") : "";
        const std::string note = memberOf(whole, "NE");
        if (note == "kuyruk" && !lostTail_) lostTail_ = {Breach::TailGone, entry.id, before};
        if (chain_.entries == 1) isBegun_ = note == "basladi";
        // Books of before the journal begin theirs when they are put back, new ones have one of their own.
        const bool isOther = note == "yerine" || (note == "geri" && isBegun_ && chain_.entries == 2);
        if (isOther || note == "geri")
            restores_.push_back({isOther ? chain_.first : entry.id, entry.seal,
                                 std::max(entry.moment(), memberOf(whole, "SON"))});
    }

    void tellRows(const Entry& entry) {
        const auto text = [&](Column column) -> std::string_view {
            if (const auto& value = entry.values[column]) return *value;
            return {};
        };
        rows_->take(text(OfTable), text(Kind), wholeOf(text(Key)), text(Before), text(After));
    }

    // Where the next one stands behind it, it was in the chain, and is another now.
    void judgeSuspect(const Entry& next) {
        const std::string should = suspect_->sealBehind(chain_.seal, key_);
        const std::string seal = next.seal;
        const bool wasInChain =
            next.sealBehind(suspect_->seal, key_) == seal || next.sealBehind(should, key_) == seal;
        breaks(wasInChain ? Breach::Changed : Breach::Inserted, *suspect_);
    }

    void breaks(Breach breach, const Entry& entry) {
        if (chain_.broken) return;
        const bool isKnown =
            std::ranges::any_of(seen_, [&](const Seen& each) { return each.id >= entry.id; });
        chain_.broken = {breach == Breach::Inserted && isKnown ? Breach::Changed : breach, entry.id,
                         entry.moment()};
        suspect_.reset();
    }

    // The chain is whole; but is it all that was there?
    void lookBehind() {
        if (lostTail_) { // as the opening found that came next
            chain_.broken = lostTail_;
            return;
        }
        for (const Seen& each : seen_) {
            if (isMet_.contains(each.id) || each.id < chain_.first) continue;
            const bool isExplained = std::ranges::any_of(restores_, [&](const Seen& restore) {
                return restore.id <= each.id && restore.moment >= each.moment;
            });
            if (isExplained) continue;
            const bool isTail = each.id > chain_.last && counter() > chain_.last;
            chain_.broken = {isTail ? Breach::TailGone : Breach::CopiedBack,
                             isTail ? chain_.last + 1 : std::min(each.id, chain_.last + 1), each.moment};
            return;
        }
        if (counter() > chain_.last) chain_.broken = {Breach::TailGone, chain_.last + 1, chain_.moment};
    }
    // The engine of a file counts for itself how far the entries went.
    std::int64_t counter() { return books_.engine().lastCounterOf(store::kJournalTable); }

    const store::Inquiry& books_;
    store::JournalKey key_;
    const std::vector<Seen>& seen_;
    ToldRows* rows_;
    Chain chain_;
    std::optional<Entry> suspect_; // its seal does not fit; the next one tells why
    std::map<std::int64_t, bool> isMet_;
    bool isBegun_ = false; // a journal of books that had none before
    std::vector<Seen> restores_;
    std::optional<Chain::Broken> lostTail_;
};

std::string describe(const Chain::Broken& broken) {
    const std::string number = std::to_string(broken.id);
    const std::string at =
        broken.moment.size() < 10 ? "" : " (" + shownDay(broken.moment) + broken.moment.substr(10) + ")";
    switch (broken.breach) {
    case Breach::Removed:
        return number + " numaralı günlük kaydı silinmiş" +
               (at.empty() ? "" : "; ondan önceki son sağlam kayıt") + at + '.';
    case Breach::Changed:
        return number + " numaralı günlük kaydı sonradan değiştirilmiş" + at + '.';
    case Breach::Inserted:
        return number + " numaralı günlük kaydını bu program yazmamış" + at + '.';
    case Breach::TailGone:
        return number + " numaralı kayıttan başlayarak günlüğün sonu silinmiş" +
               (at.empty() ? "" : "; son görülen kayıt") + at + '.';
    case Breach::CopiedBack:
        return "defter dosyası eski bir kopyayla değiştirilmiş: bu bilgisayarın gördüğü kayıt" + at +
               " defterde yok, ayrılma " + number + " numarada.";
    case Breach::Missing:
        return "günlük ya da anahtarı silinmiş; son görülen kayıt " + number + at + '.';
    }
    return {};
}

} // namespace

Chain examine(store::Engine& engine, const std::vector<Seen>& seen, Strays* strays) {
    const store::Inquiry books(engine);
    const std::string kept = engine.journalKey();
    if (books.catalog().find(store::kJournalTable) == nullptr || kept.empty()) {
        Chain none;
        const std::int64_t last = engine.lastCounterOf(store::kJournalTable);
        if (!seen.empty())
            none.broken = {Breach::Missing, seen.back().id, seen.back().moment};
        else if (last > 0)
            none.broken = {Breach::Missing, last, {}};
        return none;
    }
    if (strays == nullptr) return Walk(books, kept, seen, nullptr).chain();
    ToldRows rows(books);
    Chain chain = Walk(books, kept, seen, &rows).chain();
    if (!chain.broken) *strays = rows.strays(chain.first == 1);
    return chain;
}

std::string describe(const Chain& chain) {
    if (chain.broken) return "GÜNLÜK TUTMUYOR: " + describe(*chain.broken);
    if (chain.entries == 0) return "Günlükte kayıt yok.";
    return "Günlük tutuyor: " + shownDay(chain.since) + " gününden beri " + std::to_string(chain.entries) +
           " kayıt.";
}
} // namespace veldona::journal
