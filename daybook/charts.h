// The shop in pictures: what was due and came in month by month, what is overdue by age, what was sold; the
// figures in tables beside them. On paper and as a picture it is the page of the layout "Grafik".
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "daybook/shopreckoning.h"
#include "platform/controls/chartpane.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

// Rows of the program's own, each cell under the name of its column.
class FigureRows : public RowSource {
public:
    void show(std::vector<std::string> fields, std::vector<std::vector<std::string>> rows);

    [[nodiscard]] int rowCount() const override { return static_cast<int>(rows_.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }

private:
    std::vector<std::string> fields_;
    std::vector<std::vector<std::string>> rows_;
    int row_ = -1;
};

struct FrmGrafik : Form {
    FrmGrafik(Forms& forms, Session& itsSession, std::shared_ptr<ShopReckoning> itsShop);

    Session& session;
    std::shared_ptr<ShopReckoning> shop; // as the books stood at the opening

    ComboBox cboDonem{*this, "cboDonem", ComboBox::Style::ListOnly};
    Label lblOzet{*this, "lblOzet"};
    ChartPane grfOdeme{*this, "grfOdeme"};
    ChartPane grfGecikme{*this, "grfGecikme"};
    ChartPane grfSatis{*this, "grfSatis"};
    DataGrid grdAylar{*this, "grdAylar"};
    DataGrid grdGecikme{*this, "grdGecikme"};
    CommandButton cmdYazdir{*this, "cmdYazdir", "&Yazdır"};
    CommandButton cmdResim{*this, "cmdResim", "&Resim Olarak Kaydet"};
    CommandButton cmdKapat{*this, "cmdKapat", "&Kapat"};

    std::vector<MonthFigures> months; // of the time that is chosen
    AgeGroups ages;
    FigureRows monthRows, ageRows; // as the grids show them
};

[[nodiscard]] std::unique_ptr<Form> makeFrmGrafik(Forms& forms, Session& session,
                                                  std::shared_ptr<ShopReckoning> shop);

} // namespace veldona
