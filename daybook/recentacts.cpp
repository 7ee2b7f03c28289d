#include "daybook/recentacts.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "core/formframe.h"
#include "core/session.h"
#include "journal/takeback.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr std::size_t kMostShown = 200;
constexpr std::size_t kMostLooked = 4000; // acts, before the operator says whether to look further back

std::string moment(DateTime at) {
    return format(at, "dd/mm/yyyy hh:mm");
}

std::vector<std::string> wordsOf(std::string_view text) {
    std::istringstream stream(store::Alphabet::plain(text));
    return {std::istream_iterator<std::string>(stream), {}};
}

// A number is meant whole: "17" is neither 117 nor 17,50.
bool holds(const std::string& text, const std::string& word) {
    const bool isNumber = word.find_first_not_of("0123456789") == std::string::npos;
    const auto isPart = [](char letter) {
        return (letter >= '0' && letter <= '9') || letter == '.' || letter == ',';
    };
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        if (!isNumber || ((at == 0 || !isPart(text[at - 1])) && (end == text.size() || !isPart(text[end]))))
            return true;
    }
    return false;
}

std::string counted(int count) {
    return format(Value(count), "#,##0");
}

} // namespace

void ActRows::begin(adodb::Connection& books, std::optional<DateTime> day) {
    reader_ = std::make_unique<journal::ActReader>(books, day);
    rows_.clear();
    undone_.clear();
    names_.clear();
    narrow(choice_);
    readMore(books, kMostShown);
    row_ = shown_.empty() ? -1 : 0;
}

void ActRows::readMore(adodb::Connection& books, std::size_t most) {
    const std::size_t looked = rows_.size();
    while (!reader_->atEnd() && shown_.size() < most && rows_.size() < looked + kMostLooked)
        for (journal::Act& act : reader_->more(kMostShown))
            take(books, std::move(act));
}

void ActRows::take(adodb::Connection& books, journal::Act act) {
    auto row = std::make_unique<Row>();
    row->account = journal::accountOf(act);
    row->name = nameOf(books, row->account);
    row->summary = journal::summaryOf(act);
    row->kind = journal::kindOf(act);
    row->isTakenBack = undone_.contains(act.id);
    // One that was taken back itself has taken back nothing.
    if (const std::string target = journal::takenBackBy(act); !target.empty() && !row->isTakenBack)
        undone_.insert(target);
    row->words = store::Alphabet::plain(row->account + ' ' + row->name + ' ' + journal::nameOf(act) + ' ' +
                                        row->summary + ' ' + act.machine + ' ' + act.user);
    row->act = std::move(act);
    if (fits(*row)) shown_.push_back(row.get());
    rows_.push_back(std::move(row));
}

bool ActRows::fits(const Row& row) const {
    if (choice_.kind && row.kind != *choice_.kind) return false;
    const auto& entries = row.act.entries;
    if (!choice_.account.empty() &&
        std::none_of(entries.begin(), entries.end(),
                     [&](const journal::Entry& entry) { return entry.account == choice_.account; }))
        return false;
    return std::all_of(wanted_.begin(), wanted_.end(),
                       [&](const std::string& word) { return holds(row.words, word); });
}

void ActRows::narrow(const ActChoice& choice) {
    const Row* stoodOn = current();
    choice_ = choice;
    wanted_ = wordsOf(choice.typed);
    shown_.clear();
    for (const auto& row : rows_)
        if (fits(*row)) shown_.push_back(row.get());
    const auto place = std::find(shown_.begin(), shown_.end(), stoodOn);
    row_ = shown_.empty() ? -1 : place == shown_.end() ? 0 : static_cast<int>(place - shown_.begin());
}

const std::string& ActRows::nameOf(adodb::Connection& books, const std::string& account) {
    const auto [place, isNew] = names_.emplace(account, std::string());
    if (isNew && !account.empty())
        books.walk("SELECT AD,SOYAD FROM MUSTKAYIT WHERE HSTNO=" + journal::inStatement(account),
                   [&name = place->second](const store::Statement& row) {
                       name = trim(std::string(row.text(0)) + ' ' + std::string(row.text(1)));
                   });
    return place->second;
}

const ActRows::Row* ActRows::current() const {
    return row_ < 0 || row_ >= rowCount() ? nullptr : shown_[static_cast<std::size_t>(row_)];
}

void ActRows::standOn(const std::string& act) {
    const auto place = std::ranges::find_if(shown_, [&](const Row* row) { return row->act.id == act; });
    if (place != shown_.end()) row_ = static_cast<int>(place - shown_.begin());
}

std::string ActRows::cell(int row, std::string_view field) const {
    const Row& shown = *shown_[static_cast<std::size_t>(row)];
    if (field == "AN") return moment(shown.act.moment);
    if (field == "ADIM") return journal::nameOf(shown.act);
    if (field == "OZET") return shown.summary;
    if (field == "DURUM") return shown.isTakenBack ? "geri alındı" : "";
    if (field == "MUSTERI") return trim(shown.account + ' ' + shown.name);
    return shown.act.machine + (shown.act.user.empty() ? "" : " / " + shown.act.user);
}

std::string DetailRows::cell(int row, std::string_view field) const {
    const journal::Detail& shown = details_[static_cast<std::size_t>(row)];
    if (field == "KAYIT") return shown.row;
    if (field == "ALAN") return shown.caption;
    return field == "ESKI" ? shown.before : shown.after;
}

namespace {

void showDetails(FrmSonIslemler& f) {
    const ActRows::Row* row = f.rows.current();
    f.details.show(row ? journal::detailsOf(row->act) : std::vector<journal::Detail>());
    f.grdAyrinti.refresh();
    f.cmdGeriAl.setEnabled(row != nullptr);
    f.cmdHesap.setEnabled(row && !row->account.empty());
}

void showList(FrmSonIslemler& f) {
    f.grdListe.refresh();
    std::string words = f.rows.rowCount() == 0 ? "İşlem bulunamadı" : counted(f.rows.rowCount()) + " işlem";
    const ActRows::Row* oldest = f.rows.oldest();
    if (!f.rows.atEnd() && oldest) words += ", " + moment(oldest->act.moment) + " tarihine kadar bakıldı";
    f.lblSonuc.setCaption(words);
    f.cmdDahaEski.setEnabled(!f.rows.atEnd());
    showDetails(f);
}

ActChoice choiceOf(const FrmSonIslemler& f) {
    ActChoice choice{.typed = f.txtAra.text()};
    if (f.cboTur.listIndex() > 0) choice.kind = static_cast<journal::ActKind>(f.cboTur.listIndex() - 1);
    if (f.chkMusteri.checked()) choice.account = f.customer;
    return choice;
}

void readAnew(FrmSonIslemler& f) {
    const BusyGuard busy(f);
    const Value& day = f.dtGun.value();
    f.rows.begin(*f.session.gBaglanti, day.isNull() ? std::nullopt : std::optional(toDate(day)));
    showList(f);
}

void takeChoice(FrmSonIslemler& f) {
    if (f.isFilling) return;
    const BusyGuard busy(f);
    f.rows.narrow(choiceOf(f));
    f.rows.readMore(*f.session.gBaglanti, kMostShown);
    if (!f.rows.current() && f.rows.rowCount() > 0) f.rows.moveTo(0);
    showList(f);
}

void lookFurtherBack(FrmSonIslemler& f) {
    const BusyGuard busy(f);
    f.rows.readMore(*f.session.gBaglanti, static_cast<std::size_t>(f.rows.rowCount()) + kMostShown);
    if (!f.rows.current() && f.rows.rowCount() > 0) f.rows.moveTo(0);
    showList(f);
}

void clearChoice(FrmSonIslemler& f) {
    f.isFilling = true;
    f.txtAra.setText("");
    f.dtGun.setValue(Null{});
    f.cboTur.setListIndex(0);
    f.chkMusteri.setChecked(false);
    f.isFilling = false;
    f.rows.narrow({});
    readAnew(f);
    f.txtAra.setFocus();
}

// The list then shows what has been done meanwhile, at another till.
void tellObstacle(FrmSonIslemler& f, const journal::Act& act, const journal::Obstacle& obstacle) {
    std::string words = "Bu işlem geri alınamaz.\n\n" + obstacle.what;
    if (obstacle.act && journal::takenBackBy(*obstacle.act) == act.id)
        words = "Bu işlem zaten geri alınmış: " + journal::whenAndWho(*obstacle.act);
    else if (obstacle.act)
        words += "\nÖnünde duran işlem: " + journal::whenAndWho(*obstacle.act) + ".\nÖnce onu geri alın.";
    else if (!obstacle.isItself)
        words += "\nBunu hangi işlemin yaptığı günlükte yazılı değil.";
    f.session.desktop.dialogs.tell(words, Icon::Exclamation);
    readAnew(f);
    f.rows.standOn(act.id);
    showList(f);
}

// Looked at before the question, and again inside the transaction: another till may write meanwhile.
void takeBackCurrent(FrmSonIslemler& f) {
    const ActRows::Row* row = f.rows.current();
    if (!row) return;
    adodb::Connection& books = *f.session.gBaglanti;
    const journal::Act act = row->act;
    if (const auto obstacle = journal::obstacleTo(books, act)) return tellObstacle(f, act, *obstacle);
    const std::string question = "Bu işlem geri alınsın mı?\n\n" + row->summary;
    if (!f.session.desktop.dialogs.confirmDeleting(question, "Geri Al")) return;
    if (const auto obstacle = journal::takeBack(books, act))
        tellObstacle(f, act, *obstacle);
    else
        readAnew(f);
    f.grdListe.setFocus();
}

void openAccountOf(FrmSonIslemler& f) {
    const ActRows::Row* row = f.rows.current();
    if (!row || row->account.empty()) return;
    f.session.gFormKayit.HSTNO = row->account;
    f.session.gFormKayit.KayitID = 0;
    for (const journal::Entry& entry : row->act.entries)
        if (entry.sale) f.session.gFormKayit.KayitID = static_cast<std::int32_t>(*entry.sale);
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Chosen);
    f.forms().unload(f);
}

void Form_Load(FrmSonIslemler& f) {
    f.customer = f.session.gFormKayit.HSTNO;
    f.isFilling = true;
    f.cboTur.add("Hepsi");
    for (const char* kind : journal::kActKinds)
        f.cboTur.add(kind);
    f.cboTur.setListIndex(0);
    f.isFilling = false;
    f.chkMusteri.setEnabled(!f.customer.empty());
    f.grdListe.bind(&f.rows);
    f.grdAyrinti.bind(&f.details);
    readAnew(f);
    f.grdListe.setFocus();
}

void Form_KeyDown(FrmSonIslemler& f, KeyEvent& event) {
    switch (event.key) {
    case Key::F4:
        if (f.cmdGeriAl.isUsable()) takeBackCurrent(f);
        return;
    case Key::F5:
        return readAnew(f);
    default:
        return;
    }
}

void bindEvents(FrmSonIslemler& f) {
    f.txtAra.onChange = [&f] { takeChoice(f); };
    f.cboTur.onClick = [&f] { takeChoice(f); };
    f.chkMusteri.onClick = [&f] { takeChoice(f); };
    f.dtGun.onChange = [&f] {
        if (!f.isFilling) readAnew(f);
    };
    for (Control* box : std::initializer_list<Control*>{&f.txtAra, &f.cboTur})
        box->onKeyDown = [&f](KeyEvent& event) {
            if (event.key == Key::Enter) f.grdListe.setFocus();
        };
    f.grdListe.onRowChange = [&f] { showDetails(f); };
    f.grdListe.onDblClick = [&f] { f.grdAyrinti.setFocus(); };
    f.grdListe.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Enter) f.grdAyrinti.setFocus();
    };
    f.cmdTemizle.onClick = [&f] { clearChoice(f); };
    f.cmdDahaEski.onClick = [&f] { lookFurtherBack(f); };
    f.cmdGeriAl.onClick = [&f] { takeBackCurrent(f); };
    f.cmdHesap.onClick = [&f] { openAccountOf(f); };
    f.cmdCikis.onClick = [&f] { f.forms().unload(f); };
    f.onKeyDown = [&f](KeyEvent& event) { Form_KeyDown(f, event); };
    closeOnEscape(f);
}

} // namespace

FrmSonIslemler::FrmSonIslemler(Forms& forms, Session& itsSession)
    : Form(forms, "frmSonIslemler", "Son İşlemler"), session(itsSession) {
    grdListe.setColumns({{"Zaman", "AN", 120},
                         {"İşlem", "ADIM", 130},
                         {"Ne Oldu", "OZET", 430},
                         {"Müşteri", "MUSTERI", 160},
                         {"Kim", "KIM", 120},
                         {"Durum", "DURUM", 80}});
    grdAyrinti.setColumns(
        {{"Kayıt", "KAYIT", 330}, {"Alan", "ALAN", 160}, {"Eski", "ESKI", 220}, {"Yeni", "YENI", 220}});
    bindEvents(*this);
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] {
        grdListe.bind(nullptr);
        grdAyrinti.bind(nullptr);
    };
}

std::unique_ptr<Form> makeFrmSonIslemler(Forms& forms, Session& session) {
    return std::make_unique<FrmSonIslemler>(forms, session);
}

} // namespace veldona
