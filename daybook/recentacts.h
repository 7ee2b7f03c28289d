// What was done last, at this till and at the others: each act with what it changed, in full on Enter, and
// the way back from it.
//
// Whoever wants the account of an act finds the answer 4 in gFormKayit with the account in HSTNO and the
// sale, or 0, in KayitID. The caller may name the customer on show in HSTNO.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "journal/acts.h"
#include "journal/words.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

// What the list is narrowed to.
struct ActChoice {
    std::string typed;                      // words that all occur, in any order
    std::optional<journal::ActKind> kind{}; // nothing: all
    std::string account{};                  // of this customer alone
};

// The acts read so far, and those of them that are shown.
class ActRows : public RowSource {
public:
    struct Row {
        journal::Act act;
        std::string account, name, summary; // name: of the account's customer
        std::string words;                  // what is typed is looked for here
        journal::ActKind kind;
        bool isTakenBack = false; // and still is
    };

    void begin(adodb::Connection& books, std::optional<DateTime> day);
    // Reads on until `most` are shown, or so many were looked at that the operator shall say whether to go
    // on.
    void readMore(adodb::Connection& books, std::size_t most);
    void narrow(const ActChoice& choice);

    [[nodiscard]] const Row* current() const;
    [[nodiscard]] const Row* oldest() const { return rows_.empty() ? nullptr : rows_.back().get(); }
    [[nodiscard]] bool atEnd() const { return !reader_ || reader_->atEnd(); }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(shown_.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }
    void standOn(const std::string& act); // where it is shown

private:
    void take(adodb::Connection& books, journal::Act act);
    [[nodiscard]] bool fits(const Row& row) const;
    [[nodiscard]] const std::string& nameOf(adodb::Connection& books, const std::string& account);

    std::unique_ptr<journal::ActReader> reader_;
    std::vector<std::unique_ptr<Row>> rows_; // newest first
    std::vector<const Row*> shown_;
    ActChoice choice_;
    std::vector<std::string> wanted_; // the typed words, plain
    std::set<std::string> undone_;    // acts that a later one has taken back
    std::unordered_map<std::string, std::string> names_;
    int row_ = -1;
};

// The values of one act.
class DetailRows : public RowSource {
public:
    void show(std::vector<journal::Detail> details) {
        details_ = std::move(details);
        row_ = details_.empty() ? -1 : 0;
    }
    [[nodiscard]] int rowCount() const override { return static_cast<int>(details_.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }

private:
    std::vector<journal::Detail> details_;
    int row_ = -1;
};

struct FrmSonIslemler : Form {
    FrmSonIslemler(Forms& forms, Session& itsSession);

    Session& session;

    TextBox txtAra{*this, "txtAra"};
    DateBox dtGun{*this, "dtGun", DateBox::Style::Combo}; // of this day alone
    ComboBox cboTur{*this, "cboTur", ComboBox::Style::ListOnly};
    CheckBox chkMusteri{*this, "chkMusteri", "Yalnız açık &müşteri"}; // the one that the caller has on show
    CommandButton cmdTemizle{*this, "cmdTemizle", "Temi&zle"};
    DataGrid grdListe{*this, "grdListe"};
    Label lblSonuc{*this, "lblSonuc"};
    DataGrid grdAyrinti{*this, "grdAyrinti"};
    CommandButton cmdDahaEski{*this, "cmdDahaEski", "&Daha Eskiler"};
    CommandButton cmdGeriAl{*this, "cmdGeriAl", "&Geri Al"};
    CommandButton cmdHesap{*this, "cmdHesap", "&Hesabı Aç"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    ActRows rows;
    DetailRows details;
    std::string customer;   // on show at the caller's
    bool isFilling = false; // the fields are set by the program, which narrows nothing
};

[[nodiscard]] std::unique_ptr<Form> makeFrmSonIslemler(Forms& forms, Session& session);

} // namespace veldona
