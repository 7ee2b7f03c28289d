#include "reports/accountnames.h"

#include <utility>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/alphabet.h"

namespace veldona {

namespace {

// Fewer are found by index in less time than all are read.
constexpr std::size_t kMany = 1000;

std::string textOf(const Value& deger) {
    return deger.isNull() || deger == Value(true) ? std::string() : toText(deger);
}

} // namespace

AccountNames::AccountNames(Session& session, std::size_t lookUps) : session_(session) {
    if (lookUps >= kMany) readAll();
}

// Of accounts whose numbers the store takes for equal a look-up finds the first one: where these are spelled
// in two ways, nothing is known.
void AccountNames::readAll() {
    RecordsetPtr rs;
    KayitSetiAc(session_, rs, "SELECT HSTNO,AD,SOYAD FROM MUSTKAYIT WHERE HSTNO>'' ORDER BY HSTNO,ID",
                adodb::CursorLocation::Client);
    const int count = rs->recordCount();
    known_.reserve(static_cast<std::size_t>(count));
    std::string previous;
    for (int i = 0; i < count; ++i) {
        std::string mustno = toText(rs->at(i, 0));
        const bool isOther = mustno != previous;
        if (isOther && store::Alphabet::turkish().isSame(mustno, previous)) return known_.clear();
        if (isOther) known_.emplace(mustno, AccountName{textOf(rs->at(i, 1)), textOf(rs->at(i, 2))});
        previous = std::move(mustno);
    }
}

AccountName AccountNames::of(const std::string& mustno) {
    if (const auto found = known_.find(mustno); found != known_.end()) return found->second;
    const auto field = [&](const char* alan) {
        return textOf(AlanDegeriOku(session_, alan, "MUSTKAYIT", "HSTNO", mustno));
    };
    return {field("AD"), field("SOYAD")};
}

} // namespace veldona
