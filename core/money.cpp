#include "core/money.h"

#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/storedamount.h"

namespace veldona {

namespace {

std::string mask(const Session& session) {
    return session.gKusuratModu == 1 ? "#,##0.000000" : kParaMaskesi;
}

// Amounts of a shop that counts in whole old currency.
constexpr const char* kWholeMask = "###,###,###";

} // namespace

std::string ParaYaz(const Session& session, const Value& value, const std::string& ifade, ParaKipi kip) {
    if (kip == ParaKipi::Ifade) return session.gParaBirimi == 1 ? "(" + ifade + " / 1000000)" : ifade;
    if (value.isNull()) return {};
    if (session.gParaBirimi != 1) return format(value, kWholeMask);
    return format(StoredAmount::ofColumn(value).lira(), mask(session));
}

std::string ParaOku(const Session& session, const Value& value, const std::string&, ParaKipi kip) {
    Value amount = value;
    if (session.gParaBirimi == 1) {
        const bool empty = amount.isText() && amount.get<std::string>().empty();
        amount = empty ? 0.0 : StoredAmount::ofLira(toDouble(amount)).column();
    }
    if (kip == ParaKipi::Ifade) return toText(amount);
    return format(amount, session.gParaBirimi == 1 ? mask(session) : kWholeMask);
}

std::string ParaGoster(const Session& session, const Value& stored) {
    return ParaYaz(session, stored, {}, ParaKipi::Deger);
}

Value BosIseNull(const std::string& text) {
    return text.empty() ? Value("") : Value(text);
}

Value SifirIseNull(const Value& value) {
    if (value.isNull() || toDouble(value) <= 0) return "NULL";
    return static_cast<std::int64_t>(toLong(value));
}

DateTime TarihDuzelt(DateTime& date) {
    if (val(toText(date).substr(0, 2)) < 13) date = toDate(format(date, "mm,dd,yyyy"));
    return date;
}

std::string TarihSabiti(DateTime date, const std::string& saat) {
    return "#" + format(date, "mm,dd,yyyy") + saat + "#";
}

} // namespace veldona
