#include "daybook/bugun.h"

#include <array>

#include "core/formframe.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "daybook/bugunacts.h"
#include "daybook/reminders.h"
#include "daybook/statement.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kKinds[] = {"Hepsi",
                                  "Bugün vadesi gelenler",
                                  "Günü geçenler",
                                  "Satıştan beri hiç ödemeyenler",
                                  "Sözü beklenenler",
                                  "Sözünü tutmayanlar"}; // in the order of CallKind

struct DaysEntry {
    const char* words;
    std::optional<DaysRange> range;
};
const std::array<DaysEntry, 5> kDays = {{{"Hepsi", {}},
                                         {"1–30 gün", DaysRange{1, 30}},
                                         {"31–60 gün", DaysRange{31, 60}},
                                         {"61–90 gün", DaysRange{61, 90}},
                                         {"90 günden çok", DaysRange{91, {}}}}};

std::string count(std::size_t number, const char* of) {
    return format(Value(static_cast<std::int64_t>(number)), "#,##0") + " " + of;
}

std::size_t countOf(const CallList& list, StoredAmount CallRow::*amount) {
    return static_cast<std::size_t>(
        std::ranges::count_if(list.rows, [&](const CallRow& row) { return row.*amount >= kLeastClaim; }));
}

void showFigures(FrmBugun& f) {
    const CallList& list = f.memory->list;
    f.lblBugunVade.setCaption(amountWords(list.dueToday));
    f.lblBugunVadeNot.setCaption(count(countOf(list, &CallRow::dueToday), "müşteri"));
    f.lblGunuGecen.setCaption(amountWords(list.overdue));
    f.lblGunuGecenNot.setCaption(count(countOf(list, &CallRow::overdue), "müşteri"));
    StoredAmount received;
    std::string boxes;
    for (const CashReceived& box : list.received) {
        received += box.amount;
        boxes += (boxes.empty() ? "" : "  ·  ") + (box.box.empty() ? "Kasa seçilmemiş" : box.box) + " " +
                 amountWords(box.amount);
    }
    f.lblTahsilat.setCaption(amountWords(received));
    f.lblTahsilatNot.setCaption(boxes.empty() ? "Bugün tahsilat yok" : boxes);
    f.lblBeklenen.setCaption(amountWords(list.expected));
    f.lblBeklenenNot.setCaption(format(list.today, "dd/mm/yyyy") + " – " +
                                format(list.weekEnd, "dd/mm/yyyy"));
}

// The sorted column says so.
void nameColumns(FrmBugun& f) {
    std::vector<DataGrid::Column> columns = CallRows::columns();
    const CallChoice& choice = f.memory->choice;
    columns[static_cast<std::size_t>(choice.order)].title += choice.descending ? " ▼" : " ▲";
    f.grdListe.setColumns(std::move(columns));
}

void showNotes(FrmBugun& f) {
    const CallRow* row = f.rows.current();
    f.fraNot.setCaption(row ? "Görüşme Notu: " + row->name : "Görüşme Notu");
    constexpr std::size_t most = 50;
    f.notes.show(row ? callNotesOf(*f.session.gBaglanti, row->account, f.memory->list.today, most)
                     : std::vector<CallNote>());
    f.grdNotlar.refresh();
}

void showTotals(FrmBugun& f) {
    const CallTotals& totals = f.rows.totals();
    f.lblToplam.setCaption(count(static_cast<std::size_t>(f.rows.rowCount()), "müşteri") +
                           "     Günü geçen " + amountWords(totals.overdue) + "  (" +
                           count(static_cast<std::size_t>(totals.installments), "taksit") +
                           ")     Bugün vadeli " + amountWords(totals.dueToday));
    for (Control* needsRow :
         std::initializer_list<Control*>{&f.cmdHesap, &f.cmdYazdir, &f.cmdTablo, &f.cmdNotKaydet})
        needsRow->setEnabled(f.rows.rowCount() > 0);
}

void showRows(FrmBugun& f) {
    f.rows.show(f.memory->list, f.memory->choice);
    nameColumns(f);
    f.grdListe.refresh();
    showTotals(f);
    showNotes(f);
}

// An amount that is being typed narrows nothing until it reads as one.
void takeChoice(FrmBugun& f) {
    if (f.isFilling) return;
    CallChoice& choice = f.memory->choice;
    choice.typed = f.txtAra.text();
    choice.kind = static_cast<CallKind>(f.cboDurum.listIndex());
    choice.days = kDays[static_cast<std::size_t>(f.cboGecikme.listIndex())].range;
    const Value atLeast = trim(f.txtEnAz.text());
    choice.atLeast = isNumeric(atLeast) ? StoredAmount::ofLira(toDouble(atLeast)) : StoredAmount{};
    choice.order = static_cast<CallColumn>(f.cboSira.listIndex());
    choice.descending = f.chkTers.checked();
    showRows(f);
}

void fillFields(FrmBugun& f) {
    f.isFilling = true;
    const CallChoice& choice = f.memory->choice;
    f.txtAra.setText(choice.typed);
    f.cboDurum.setListIndex(static_cast<int>(choice.kind));
    int days = 0;
    for (std::size_t i = 0; i < kDays.size(); ++i)
        if (choice.days && kDays[i].range && kDays[i].range->first == choice.days->first)
            days = static_cast<int>(i);
    f.cboGecikme.setListIndex(days);
    f.txtEnAz.setText(choice.atLeast > StoredAmount{} ? amountWords(choice.atLeast) : "");
    f.cboSira.setListIndex(static_cast<int>(choice.order));
    f.chkTers.setChecked(choice.descending);
    f.isFilling = false;
}

void cmdTemizle_Click(FrmBugun& f) {
    f.memory->choice = {};
    fillFields(f);
    showRows(f);
    f.txtAra.setFocus();
}

// A column that is sorted by already turns round.
void sortBy(FrmBugun& f, CallColumn column) {
    CallChoice& choice = f.memory->choice;
    choice.descending = choice.order == column && !choice.descending;
    choice.order = column;
    fillFields(f);
    showRows(f);
}

void Form_Load(FrmBugun& f) {
    const BusyGuard busy(f);
    for (const char* kind : kKinds)
        f.cboDurum.add(kind);
    for (const DaysEntry& days : kDays)
        f.cboGecikme.add(days.words);
    for (const DataGrid::Column& column : CallRows::columns())
        f.cboSira.add(column.title);
    f.grdListe.bind(&f.rows);
    f.grdNotlar.bind(&f.notes);
    fillFields(f);
    refreshCallList(f);
    f.rows.moveTo(f.memory->account);
    f.grdListe.refresh();
    showNotes(f);
    if (f.rows.rowCount() > 0) f.grdListe.setFocus();
}

void Form_Unload(FrmBugun& f) {
    if (const CallRow* row = f.rows.current()) f.memory->account = row->account;
    f.grdListe.bind(nullptr);
    f.grdNotlar.bind(nullptr);
}

void click(const CommandButton& button) {
    if (!button.isUsable() || !button.onClick) return;
    button.form().forms().pressesFor(button);
    button.onClick();
}

void Form_KeyDown(FrmBugun& f, KeyEvent& event) {
    const auto press = [&](CommandButton& button) {
        event.swallowed = true;
        click(button);
    };
    switch (event.key) {
    case Key::F2:
        return press(f.cmdNotKaydet);
    case Key::F3:
        event.swallowed = true;
        return f.txtNot.setFocus();
    case Key::F5:
        event.swallowed = true;
        return refreshCallList(f);
    case Key::F7:
        event.swallowed = true;
        return sortBy(f, f.memory->choice.order);
    case Key::F9:
        return press(f.cmdYazdir);
    default:
        return;
    }
}

// From the fields of the choice Enter and the arrow lead to the rows.
void choice_KeyDown(FrmBugun& f, const Control& field, KeyEvent& event) {
    const bool leads = event.key == Key::Enter || (event.key == Key::Down && &field == &f.txtAra);
    if (!leads || f.rows.rowCount() == 0) return;
    event.swallowed = true;
    f.grdListe.setFocus();
}

void note_KeyDown(FrmBugun& f, const Control& field, KeyEvent& event) {
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    if (&field == &f.txtNot) return f.dtSozTarihi.setFocus();
    if (&field == &f.dtSozTarihi) return f.txtSozTutari.setFocus();
    click(f.cmdNotKaydet);
}

void bindChoice(FrmBugun& f) {
    for (TextBox* box : {&f.txtAra, &f.txtEnAz})
        box->onChange = [&f] { takeChoice(f); };
    for (Control* box : std::initializer_list<Control*>{&f.cboDurum, &f.cboGecikme, &f.cboSira, &f.chkTers})
        box->onClick = [&f] { takeChoice(f); };
    for (Control* box :
         std::initializer_list<Control*>{&f.txtAra, &f.cboDurum, &f.cboGecikme, &f.txtEnAz, &f.cboSira})
        box->onKeyDown = [&f, box](KeyEvent& event) { choice_KeyDown(f, *box, event); };
    f.cmdTemizle.onClick = [&f] { cmdTemizle_Click(f); };
}

// Those who are written to, of the customers shown.
std::vector<std::string> overdueAccounts(const FrmBugun& f) {
    std::vector<std::string> accounts;
    for (const CallRow* row : f.rows.shown())
        if (row->overdue >= kLeastClaim) accounts.push_back(row->account);
    return accounts;
}

void bindPapers(FrmBugun& f) {
    f.cmdYazdir.onClick = [&f] { printCallList(f); };
    f.cmdTablo.onClick = [&f] { writeCallSheet(f); };
    f.cmdMektup.onClick = [&f] { showReminderLetters(f.session, overdueAccounts(f)); };
    f.cmdMesaj.onClick = [&f] { writeReminderMessages(f.session, overdueAccounts(f)); };
    f.cmdGrafik.setEnabled(f.forms().isKnown("frmGrafik"));
    f.cmdGrafik.onClick = [&f] { showScreen(f.session, "frmGrafik", Kip::Modal); };
    f.cmdEkstre.onClick = [&f] {
        if (const CallRow* row = f.rows.current())
            showStatement(f.session, row->account, StatementNotes::Last);
    };
}

void bindEvents(FrmBugun& f) {
    bindChoice(f);
    for (Control* box : std::initializer_list<Control*>{&f.txtNot, &f.dtSozTarihi, &f.txtSozTutari})
        box->onKeyDown = [&f, box](KeyEvent& event) { note_KeyDown(f, *box, event); };
    f.grdListe.onHeadClick = [&f](int column) { sortBy(f, static_cast<CallColumn>(column)); };
    f.grdListe.onRowChange = [&f] { showNotes(f); };
    f.grdListe.onDblClick = [&f] { openCalledAccount(f); };
    f.grdListe.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Enter) openCalledAccount(f);
    };
    f.cmdNotKaydet.onClick = [&f] {
        if (!saveCallNote(f)) return;
        showRows(f);
        f.grdListe.setFocus();
    };
    f.cmdHesap.onClick = [&f] { openCalledAccount(f); };
    bindPapers(f);
    f.cmdCikis.onClick = [&f] { f.forms().unload(f); };
    f.onKeyDown = [&f](KeyEvent& event) { Form_KeyDown(f, event); };
    closeOnEscape(f);
}

} // namespace

std::string CallNoteRows::cell(int row, std::string_view field) const {
    const CallNote& note = notes_[static_cast<std::size_t>(row)];
    if (field == "TRH") return format(note.at, "dd/mm/yyyy hh:mm");
    if (field == "NOT") return note.text;
    return note.promise ? promiseWords(*note.promise) : std::string();
}

void refreshCallList(FrmBugun& f) {
    CallListMemory& memory = *f.memory;
    memory.list = readCallList(*f.session.gBaglanti, *memory.shop, f.session.desktop.clock.today());
    showFigures(f);
    showRows(f);
}

FrmBugun::FrmBugun(Forms& forms, Session& itsSession, std::shared_ptr<CallListMemory> itsMemory)
    : Form(forms, "frmBugun", "Bugün"), session(itsSession), memory(std::move(itsMemory)) {
    place(fraNot, {&txtNot, &dtSozTarihi, &txtSozTutari, &cmdNotKaydet, &grdNotlar});
    grdNotlar.setColumns({{"Görüşme", "TRH", 120}, {"Söylenen", "NOT", 220}, {"Söz", "SOZ", 190}});
    bindEvents(*this);
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { Form_Unload(*this); };
}

std::unique_ptr<Form> makeFrmBugun(Forms& forms, Session& session, std::shared_ptr<CallListMemory> memory) {
    return std::make_unique<FrmBugun>(forms, session, std::move(memory));
}

} // namespace veldona
