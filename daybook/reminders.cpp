#include "daybook/reminders.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/amountwords.h"
#include "core/exportfolders.h"
#include "core/reporting.h"
#include "core/session.h"
#include "daybook/agegroups.h"
#include "daybook/paperrows.h"
#include "platform/desktop/desktop.h"
#include "platform/export/delimited.h"
#include "platform/export/outfile.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using report::DataSet;
using namespace columntype;

constexpr const char* kNobody = "Günü geçen borç yok, yazılacak bir şey bulunmadı.";

// What is overdue of the accounts.
struct Reminders {
    DataSet customers{"hatirlatma",
                      {{"HSTNO"},
                       {"AD_SOYAD"},
                       {"TELEFON"},
                       {"ADRES"},
                       {"TUTAR", kMoney},
                       {"YAZIYLA"},
                       {"TAKSIT", kWhole},
                       {"TARIH", kDate},
                       {"GUN", kWhole},
                       {"FIRMA"},
                       {"FIRMA_TELEFON"}}};
    DataSet installments{
        "taksitler", {{"HSTNO"}, {"ISLEMNO", kWhole}, {"ODTRH", kDate}, {"TUTAR", kMoney}, {"GUN", kWhole}}};
};

struct Overdue {
    StoredAmount sum;
    int count = 0;
    DateTime since;
};

class Collecting {
public:
    explicit Collecting(Session& session)
        : session_(session), today_(session.desktop.clock.today()), shop_(letterhead(session)) {}

    void add(const std::string& account);
    [[nodiscard]] Reminders take() { return std::move(made_); }

private:
    // Its overdue installments become rows.
    [[nodiscard]] Overdue read(const std::string& account);
    [[nodiscard]] Value ofShop(std::string_view column) const {
        return shop_.rowCount() > 0 ? shop_.at(0, static_cast<std::size_t>(shop_.findColumn(column)))
                                    : Value();
    }

    Session& session_;
    DateTime today_;
    DataSet shop_;
    Reminders made_;
};

Overdue Collecting::read(const std::string& account) {
    Overdue all;
    for (const SaleArrears& sale : arrearsOfAccount(*session_.gBaglanti, account))
        for (const OpenInstallment& row : sale.open) {
            if (row.due >= today_) continue;
            all.since = all.count == 0 ? row.due : std::min(all.since, row.due);
            all.sum += row.open;
            ++all.count;
            made_.installments.addRow(
                {account, sale.sale, row.due, row.open.working(), daysBetween(row.due, today_)});
        }
    return all;
}

void Collecting::add(const std::string& account) {
    const auto party = readParty(session_, account);
    if (!party) return;
    const Overdue overdue = read(party->account);
    if (overdue.count == 0) return;
    const Currency sum = overdue.sum.roundedToKurus().working();
    made_.customers.addRow({party->account, party->name, party->telephones, party->address, sum,
                            YaziyaCevir(sum), overdue.count, overdue.since,
                            daysBetween(overdue.since, today_), ofShop("FIRMA"), ofShop("TELEFON")});
}

Reminders collect(Session& session, const std::vector<std::string>& accounts) {
    Collecting collecting(session);
    for (const std::string& account : accounts)
        collecting.add(account);
    return collecting.take();
}

std::string digitsOf(const std::string& text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

// The first of the numbers, parted by commas, that is one of a mobile telephone: 05xx…, 5xx…, 905xx…; as
// digits, which every sender takes and no spreadsheet takes for a formula.
std::string mobileOf(const std::string& telephones) {
    constexpr std::size_t kDigits = 10; // behind the leading zero
    for (std::size_t at = 0; at <= telephones.size();) {
        const std::size_t end = std::min(telephones.find(',', at), telephones.size());
        const std::string digits = digitsOf(telephones.substr(at, end - at));
        const std::size_t own = digits.starts_with("90") && digits.size() == kDigits + 2 ? 2
                                : digits.starts_with("0")                                ? 1
                                                                                         : 0;
        if (digits.size() == own + kDigits && digits[own] == '5') return "0" + digits.substr(own);
        at = end + 1;
    }
    return {};
}

void tellWritten(Session& session, const std::string& file, std::size_t written, std::size_t without) {
    std::string words = std::to_string(written) + " ileti yazıldı: " + file;
    if (without > 0)
        words += "\n" + std::to_string(without) + " müşterinin cep telefonu yok, iletisi yazılmadı.";
    session.desktop.dialogs.tell(words, Icon::Information);
}

} // namespace

void showReminderLetters(Session& session, const std::vector<std::string>& accounts) {
    Reminders reminders = collect(session, accounts);
    if (reminders.customers.rowCount() == 0) return session.desktop.dialogs.tell(kNobody, Icon::Information);
    showReportWithData(
        session, "HatirlatmaMektubu",
        {letterhead(session), std::move(reminders.customers), std::move(reminders.installments)});
}

void writeReminderMessages(Session& session, const std::vector<std::string>& accounts) {
    const Reminders reminders = collect(session, accounts);
    const std::size_t count = reminders.customers.rowCount();
    if (count == 0) return session.desktop.dialogs.tell(kNobody, Icon::Information);
    const std::vector<std::string> texts =
        textsWithData(session, "HatirlatmaMesaji", {reminders.customers}, "metin");
    const auto telephone = static_cast<std::size_t>(reminders.customers.findColumn("TELEFON"));
    DataSet messages{"mesajlar", {{"TELEFON"}, {"METIN"}}};
    for (std::size_t row = 0; row < std::min(texts.size(), count); ++row) {
        const std::string number = mobileOf(joinText(reminders.customers.at(row, telephone)));
        if (!number.empty()) messages.addRow({number, texts[row]});
    }
    const std::size_t written = messages.rowCount();
    if (written == 0)
        return session.desktop.dialogs.tell("Yazılacak müşterilerin hiçbirinin cep telefonu yok.",
                                            Icon::Information);
    report::Document file;
    file.data.push_back(std::move(messages));
    const std::string path = exportFile(
        session, "Mesaj", "Hatırlatma " + format(session.desktop.clock.now(), "yyyy-mm-dd hh.mm.ss"), ".csv");
    exports::writeFile(path, exports::commaSeparated(file));
    tellWritten(session, path, written, count - written);
}

} // namespace veldona
