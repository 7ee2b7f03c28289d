#include "ledger/balances.h"

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/accountmarks.h"
#include "ledger/loading.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

void showFormatted(Label& label) {
    label.setCaption(format(label.caption(), kMoneyMask));
}

// A list's text as an amount of two decimals; an empty or missing row is 0.
Currency shownAmount(const std::string& text) {
    return text.empty() ? Currency{} : toShownCurrency(text, 2);
}

// A row that does not read is passed over; the others count.
void sumPayments(FrmMainVeldona& f) {
    Err passedOver;
    f.cyOdenen = Currency{};
    for (int i = 0; i < f.L2.count(); ++i)
        attempt(passedOver, [&] { f.cyOdenen += toCurrency(f.L2.list(i)); });
    f.Label8.setCaption(toText(f.cyOdenen));
}

// Into `sum`, which keeps what was added when the counter runs over behind row 255.
void sumSchedule(const FrmMainVeldona& f, Currency& sum) {
    sum = Currency{};
    countInByte(0, f.L5.count() - 1, [&](int i) {
        if (!f.L5.list(i).empty()) sum += toCurrency(f.L5.list(i));
    });
}

bool isEmptyAmount(const Value& value) {
    return joinText(value).empty();
}

} // namespace

void BAKIYE_HESAPLA(FrmMainVeldona& f, const Value& indirim) {
    Err passedOver;
    Currency due, paid, discount;
    resumeNext(
        passedOver, [&] { sumPayments(f); }, [&] { due = toCurrency(f.Label11.caption()); },
        [&] { paid = toCurrency(f.Label8.caption()); }, [&] { showFormatted(f.Label8); },
        // Stored, then shown, then read back: the discount is rounded to two places.
        [&] {
            const Currency column = isEmptyAmount(indirim) ? Currency{} : toCurrency(indirim);
            discount = toCurrency(ParaGoster(f.session, StoredAmount::ofColumn(column.toDouble())));
        },
        [&] { f.Label11.setCaption(toText(due - discount)); }, [&] { showFormatted(f.Label11); },
        [&] { f.Label9.setCaption(toText(toCurrency(f.Label11.caption()) - paid)); },
        [&] { showFormatted(f.Label9); });
}

void UZAK_BAKIYE_HESAPLA(FrmMainVeldona& f, const Value& topborc) {
    Err passedOver;
    Currency due, paid;
    resumeNext(
        passedOver, [&] { sumPayments(f); }, [&] { f.Label11.setCaption(toText(topborc)); },
        [&] { due = toCurrency(f.Label11.caption()); }, [&] { paid = toCurrency(f.Label8.caption()); },
        [&] { f.Label8.setCaption(format(toDouble(f.Label8.caption()), kMoneyMask)); },
        [&] { showFormatted(f.Label11); }, [&] { f.Label9.setCaption(toText(due - paid)); },
        [&] { showFormatted(f.Label9); });
}

void GECIKEN_ODM(FrmMainVeldona& f) {
    Err passedOver;
    f.L6.clear();
    f.Label21.setCaption("");
    Currency total;
    int first = 0;
    if (const std::string islemno = trim(f.Text5.text()); !islemno.empty()) {
        attempt(passedOver, [&] {
            RecordsetPtr rs;
            KayitSetiAc(f.session, rs,
                        "SELECT COUNT(*) From URUNSAT WHERE ISLEMNO = " + islemno + " AND PESINAT=1 ",
                        adodb::CursorLocation::Client);
            if (toLong(rs->value(0)) == 0) return;
            first = 1;
            f.L6.add("Peşinat");
        });
    }
    attempt(passedOver, [&] {
        countInByte(first, f.L5.count() - 1, [&](int i) {
            f.L6.add(toText(shownAmount(f.L2.list(i)) - shownAmount(f.L5.list(i))));
            total += toCurrency(f.L6.list(i));
        });
    });
    f.Label21.setCaption(format(total, kMoneyMask));
    showMarksAnew(f);
}

void TAKSITLENDIRILMEMIS_MIKTAR(FrmMainVeldona& f) {
    Err passedOver;
    attempt(passedOver, [&] { f.rsOdenen = f.dbMain->openRecordset("TAKSITODENEN"); });
    attempt(passedOver, [&] { sumSchedule(f, f.cyTaksit); });
    // Read as far as digits go, on purpose: the grouping of a shown amount stops the reading.
    const double planned = val(toText(f.cyTaksit));
    const double total = val(f.Label11.caption());
    if (planned != total && f.Label8.caption() != f.Label11.caption())
        f.Label15.setCaption(toText(total - planned));
}

bool TaksitKontrol(FrmMainVeldona& f) {
    Err passedOver;
    Currency sum;
    Value indirim;
    bool found = false;
    bool isNewest = true;
    if (f.List6.count() == 0) attempt(passedOver, [&] { isNewest = ISLEMNUMARALARI_YUKLE(f); });
    if (!isNewest) return false;
    attempt(passedOver, [&] { sumSchedule(f, sum); });
    attempt(passedOver, [&] {
        RecordsetPtr rs;
        KayitSetiAc(f.session, rs, "SELECT * From ISLEMNOTABLO WHERE ISLEMNO = " + f.Text5.text(),
                    adodb::CursorLocation::Client);
        found = !rs->eof();
        if (found) indirim = rs->value("INDIRIM_YTL");
    });
    f.lblIndirim.setCaption("0");
    if (found && !isEmptyAmount(indirim))
        attempt(passedOver, [&] {
            f.lblIndirim.setCaption(
                toText(roundHalfEven(toDouble(ParaGoster(f.session, storedIn(indirim))), 2)));
        });
    attempt(passedOver, [&] {
        if (f.Label11.caption().empty() || !f.bTaksitKontrol || toCurrency(f.Label11.caption()) == sum)
            return;
        f.session.desktop.dialogs.show({"Taksitlendirme Yanlış Yapılmış. İşlemlerinizi Kontrol Ediniz.",
                                        "Eksik Taksitlendirme", Icon::Exclamation, Buttons::Ok});
    });
    f.bTaksitKontrol = true;
    return true;
}

bool TAKSIT_KONTROL(FrmMainVeldona& f) {
    return TaksitKontrol(f);
}

void RENK_AYARLA(FrmMainVeldona& f) {
    Currency sum;
    for (int i = 0; i < f.L4.count(); ++i) {
        if (f.DTPicker1.value().isNull() || toDate(f.L4.list(i)) > toDate(f.DTPicker1.value())) continue;
        sum += shownAmount(f.L5.list(i));
        if (sum <= f.cyOdenen) continue;
        f.L4.setForeColor(Colour::CoveredByPayments);
        f.L2.setForeColor(Colour::CoveredByPayments);
    }
}

} // namespace veldona
