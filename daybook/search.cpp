#include "daybook/search.h"

#include <algorithm>

#include "core/formframe.h"
#include "core/session.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr std::size_t kMostShown = 200; // whoever sees more types on
constexpr int kPage = 10;

std::string counted(std::size_t count) {
    return format(Value(static_cast<std::int64_t>(count)), "###,###,###");
}

std::string resultWords(const FrmArama& f) {
    if (trim(f.txtAra.text()).empty())
        return "Ad, telefon, müşteri numarası, satış numarası ya da ürün yazın.";
    const std::size_t count = f.found.count();
    if (count == 0) return "Bulunamadı";
    std::string words = counted(count) + " sonuç";
    if (count > kMostShown) words += ", ilk " + counted(kMostShown) + " tanesi listede";
    return words;
}

void txtAra_Change(FrmArama& f) {
    f.memory->typedLast = f.txtAra.text();
    f.found.show(*f.index, f.index->find(f.txtAra.text(), kMostShown));
    f.lblSonuc.setCaption(resultWords(f));
    f.cmdAc.setEnabled(f.found.rowCount() > 0);
    f.grdSonuc.refresh();
}

void openFound(FrmArama& f) {
    const SearchIndex::Hit* hit = f.found.current();
    if (!hit) return;
    f.session.gFormKayit.HSTNO = f.index->customers()[hit->customer].number;
    f.session.gFormKayit.KayitID = hit->sale ? static_cast<std::int32_t>(hit->sale->number) : 0;
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Chosen);
    f.forms().unload(f);
}

// The rows are walked from the field.
void txtAra_KeyDown(FrmArama& f, KeyEvent& event) {
    const int last = f.found.rowCount() - 1;
    const auto moveBy = [&](int rows) {
        event.swallowed = true;
        if (last >= 0) f.grdSonuc.moveTo(std::clamp(f.found.currentRow() + rows, 0, last));
    };
    switch (event.key) {
    case Key::Up:
        return moveBy(-1);
    case Key::Down:
        return moveBy(1);
    case Key::PageUp:
        return moveBy(-kPage);
    case Key::PageDown:
        return moveBy(kPage);
    case Key::Enter:
        event.swallowed = true;
        return openFound(f);
    default:
        return;
    }
}

void Form_Load(FrmArama& f) {
    f.index = &f.memory->index(f.session);
    f.grdSonuc.bind(&f.found);
    f.txtAra.setText(f.memory->typedLast);
    f.txtAra.selectAll();
}

} // namespace

void FoundRows::show(const SearchIndex& index, SearchIndex::Answer answer) {
    index_ = &index;
    answer_ = std::move(answer);
    row_ = answer_.hits.empty() ? -1 : 0;
}

const SearchIndex::Hit* FoundRows::current() const {
    return row_ < 0 ? nullptr : &answer_.hits[static_cast<std::size_t>(row_)];
}

std::string FoundRows::cell(int row, std::string_view field) const {
    const SearchIndex::Hit& hit = answer_.hits[static_cast<std::size_t>(row)];
    const SearchIndex::Customer& customer = index_->customers()[hit.customer];
    if (field == "HSTNO") return customer.number;
    if (field == "UNVAN") return customer.name;
    if (field == "TEL") {
        std::string telephones;
        for (const std::string& telephone : customer.telephones)
            telephones += (telephones.empty() ? "" : "   ") + telephone;
        return telephones;
    }
    if (!hit.sale) return field == "URUN" ? std::to_string(customer.sales) + " satış" : std::string();
    if (field == "ISLEMNO") return std::to_string(hit.sale->number);
    if (field == "TRH") return format(hit.sale->date, "dd/mm/yyyy");
    return hit.sale->goods;
}

FrmArama::FrmArama(Forms& forms, Session& itsSession, std::shared_ptr<SearchMemory> itsMemory)
    : Form(forms, "frmArama", "Ara"), session(itsSession), memory(std::move(itsMemory)) {
    grdSonuc.setColumns({{"Müşteri No", "HSTNO", 80},
                         {"Adı Soyadı", "UNVAN", 190},
                         {"Satış No", "ISLEMNO", 70},
                         {"Satış Tarihi", "TRH", 90},
                         {"Ürün", "URUN", 200},
                         {"Telefon", "TEL", 200}});
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { grdSonuc.bind(nullptr); };
    txtAra.onChange = [this] { txtAra_Change(*this); };
    txtAra.onKeyDown = [this](KeyEvent& event) { txtAra_KeyDown(*this, event); };
    grdSonuc.onKeyDown = [this](KeyEvent& event) {
        if (event.key == Key::Enter) openFound(*this);
    };
    grdSonuc.onDblClick = [this] { openFound(*this); };
    cmdAc.onClick = [this] { openFound(*this); };
    cmdKapat.onClick = [this] { this->forms().unload(*this); };
    closeOnEscape(*this);
}

std::unique_ptr<Form> makeFrmArama(Forms& forms, Session& session, std::shared_ptr<SearchMemory> memory) {
    return std::make_unique<FrmArama>(forms, session, std::move(memory));
}

} // namespace veldona
