// One search for all that a customer at the counter may name: the own name, a telephone, the customer's
// number, that of a sale, or what was bought. The field keeps the focus; each key shows what fits.
//
// The caller finds the answer 4 in gFormKayit with the account in HSTNO and the sale's number in KayitID (0:
// the account alone was picked), or no answer where nothing was chosen.
#pragma once

#include <memory>
#include <string>

#include "daybook/searchreading.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

// What was found, as the rows of a grid.
class FoundRows : public RowSource {
public:
    void show(const SearchIndex& index, SearchIndex::Answer answer);
    [[nodiscard]] const SearchIndex::Hit* current() const; // nullptr: none
    [[nodiscard]] std::size_t count() const { return answer_.count; }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(answer_.hits.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }

private:
    const SearchIndex* index_ = nullptr;
    SearchIndex::Answer answer_;
    int row_ = -1;
};

struct FrmArama : Form {
    FrmArama(Forms& forms, Session& itsSession, std::shared_ptr<SearchMemory> itsMemory);

    Session& session;
    std::shared_ptr<SearchMemory> memory;

    TextBox txtAra{*this, "txtAra"};
    Label lblSonuc{*this, "lblSonuc"}; // how many were found, or what can be typed
    DataGrid grdSonuc{*this, "grdSonuc"};
    CommandButton cmdAc{*this, "cmdAc", "&Aç"};
    CommandButton cmdKapat{*this, "cmdKapat", "&Kapat"};

    const SearchIndex* index = nullptr; // as the books stood when the screen was opened
    FoundRows found;
};

[[nodiscard]] std::unique_ptr<Form> makeFrmArama(Forms& forms, Session& session,
                                                 std::shared_ptr<SearchMemory> memory);

} // namespace veldona
