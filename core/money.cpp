#include "core/money.h"

#include "core/session.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"

namespace veldona {

namespace {

std::string mask(const Session& session) {
    return session.gKusuratModu == 1 ? "#,##0.000000" : kMoneyMask;
}

// Amounts of a shop that counts in whole old currency.
constexpr const char* kWholeMask = "###,###,###";

} // namespace

std::optional<StoredAmount> storedIn(const Value& column) {
    if (column.isNull()) return std::nullopt;
    return StoredAmount::ofColumn(column);
}

std::string ParaYaz(const Session& session, const std::optional<StoredAmount>& stored,
                    const std::string& ifade, MoneyMode kip) {
    if (kip == MoneyMode::Ifade) return session.gParaBirimi == 1 ? "(" + ifade + " / 1000000)" : ifade;
    if (!stored) return {};
    if (session.gParaBirimi != 1) return format(stored->column(), kWholeMask);
    return format(stored->lira(), mask(session));
}

StoredText ParaOku(const Session& session, const Value& value, const std::string&, MoneyMode kip) {
    Value amount = value;
    if (session.gParaBirimi == 1) {
        const bool empty = amount.isText() && amount.get<std::string>().empty();
        amount = empty ? 0.0 : StoredAmount::ofLira(toDouble(amount)).column();
    }
    if (kip == MoneyMode::Ifade) return StoredText(toText(amount));
    return StoredText(format(amount, session.gParaBirimi == 1 ? mask(session) : kWholeMask));
}

std::string ParaGoster(const Session& session, const std::optional<StoredAmount>& stored) {
    return ParaYaz(session, stored, {}, MoneyMode::Deger);
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

std::string dateLiteral(DateTime date, const std::string& timeOfDay) {
    return "#" + format(date, "mm,dd,yyyy") + timeOfDay + "#";
}

} // namespace veldona
