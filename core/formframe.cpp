#include "core/formframe.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "platform/controls/handlers.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

struct Arac {
    const char* key;
    const char* caption;
};

constexpr Arac kAraclar[] = {
    {"cmdOnceki", "Önceki"},
    {"cmdSonraki", "Sonraki"},
    {"cmdYeni", "Yeni (F3)"},
    {"cmdDegistir", "Değiştir (F5)"},
    {"cmdSil", "Sil (F6)"},
    {"cmdKaydet", "Kaydet (F2)"},
    {"cmdVazgec", "Vazgeç (F4)"},
    {"cmdBul", "Bul"},
    {"cmdTemizle", "Temizle"},
    {"cmdYanile", "Yenile"},
    {"cmdDevirBakiye", "Devir Bakiye"},
    {"cmdMail", "Mail"},
    {"cmdNotDefteri", "Not Defteri"},
    {"cmdHesapMakinesi", "Hesap Makinesi"},
    {"cmdCikis", "Çıkış"},
    {"cmdBosluk", ""},
    {"cmdBoslukOzel", ""},
    {"lblBookmark", ""},
};

bool isSpacerOrMark(const std::string& key) {
    return key == "cmdBosluk" || key == "cmdBoslukOzel" || key == "lblBookmark";
}

const std::vector<const char*>& toolsOf(int durum) {
    static const std::map<int, std::vector<const char*>> byState = {
        {FormModu::Gezinme, {"cmdOnceki", "cmdSonraki", "cmdYeni", "cmdDegistir", "cmdSil", "cmdCikis"}},
        {FormModu::Arama, {"cmdTemizle", "cmdBul", "cmdYeni", "cmdDegistir", "cmdSil", "cmdCikis"}},
        {FormModu::Yeni, {"cmdVazgec", "cmdKaydet"}},
        {FormModu::Degistir, {"cmdVazgec", "cmdKaydet"}},
        {FormModu::TumAraclar,
         {"cmdOnceki", "cmdSonraki", "cmdYeni", "cmdDegistir", "cmdSil", "cmdYanile", "cmdDevirBakiye",
          "cmdBul", "cmdCikis", "cmdMail", "cmdNotDefteri", "cmdHesapMakinesi"}},
        {FormModu::SaltOkunur, {"cmdCikis", "cmdDegistir"}},
        {FormModu::SaltKaydet, {"cmdCikis", "cmdKaydet"}},
    };
    static const std::vector<const char*> none;
    const auto found = byState.find(durum);
    return found == byState.end() ? none : found->second;
}

} // namespace

void BarKur(ToolBar& bar) {
    for (const Arac& arac : kAraclar)
        bar.add(arac.key, arac.caption);
}

void BarDurumAyarla(int durum, ToolBar& bar, int maske) {
    const auto& shown = toolsOf(durum);
    const bool all = (maske & 1) != 0;
    for (const ToolBar::Tool& tool : bar.tools()) {
        if (isSpacerOrMark(tool.key)) continue;
        const bool inState = std::find(shown.begin(), shown.end(), tool.key) != shown.end();
        bar.setToolVisible(tool.key, inState && !all);
    }
}

bool aracAcik(const ToolBar& bar, std::string_view arac) {
    const ToolBar::Tool* tool = bar.find(arac);
    return tool && tool->visible && tool->enabled && bar.isShown() && bar.isUsable();
}

void AracTuslari(const ToolBar& bar, KeyEvent& event) {
    static constexpr std::array<std::pair<Key, const char*>, 5> kTuslar = {{{Key::F2, "cmdKaydet"},
                                                                            {Key::F3, "cmdYeni"},
                                                                            {Key::F4, "cmdVazgec"},
                                                                            {Key::F5, "cmdDegistir"},
                                                                            {Key::F6, "cmdSil"}}};
    for (const auto& [tus, arac] : kTuslar) {
        if (event.key != tus) continue;
        event.swallowed = true;
        if (aracAcik(bar, arac)) call(bar.onToolClick, std::string(arac));
    }
}

bool FormAcikMi(const Forms& forms, std::string_view name) {
    const auto loaded = forms.loadedForms();
    return std::any_of(loaded.begin(), loaded.end(),
                       [&](const Form* form) { return upperTurkish(form->name()) == upperTurkish(name); });
}

void Bekle(Form& form, bool acik) {
    form.setPointer(acik ? MousePointer::Wait : MousePointer::Default);
    form.setEnabled(!acik);
}

void IsaretGoster(Form& form, bool acik) {
    form.setPointer(acik ? MousePointer::Default : MousePointer::Wait);
}

void HFocus(Control& control) {
    if (auto* text = dynamic_cast<TextBox*>(&control); text && !text->text().empty()) text->selectAll();
}

void HighLight(Forms& forms) {
    Form* form = forms.active();
    Control* control = form ? form->activeControl() : nullptr;
    auto* text = dynamic_cast<TextBox*>(control);
    if (!text || text->text().empty()) return;
    text->selectAll();
    text->setBackColor(Colour::FocusedBackground);
}

void BGFocus(Control& control) {
    if (!control.locked) control.setBackColor(Colour::FocusedBackground);
}

void BGLoss(Control& control) {
    if (!control.locked) control.setBackColor(Colour::WindowBackground);
}

namespace {

// Turns to the tab page that the control stands on.
void turnTo(const Control& control) {
    for (const Control* page = &control; page->holder(); page = page->holder())
        page->holder()->turnToPage(*page);
}

// Shown, but perhaps on a page that is not turned to.
bool canBeShown(const Control& control) {
    for (const Control* each = &control; each; each = each->holder())
        if (!each->visible() && !(each->holder() && each->holder()->hasPages())) return false;
    return true;
}

bool canEnter(const Control& control) {
    return control.isField() && canBeShown(control) && control.isUsable();
}

} // namespace

void OdakIsaretle(Form& form) {
    for (Control* control : form.controls()) {
        if (!control->isField()) continue;
        control->onGotFocus = [control] {
            HFocus(*control);
            BGFocus(*control);
        };
        control->onLostFocus = [control] { BGLoss(*control); };
    }
}

void SonrakiAlan(Form& form) {
    const auto& controls = form.controls();
    auto next = std::find(controls.begin(), controls.end(), form.activeControl());
    if (next != controls.end())
        next = std::find_if(next + 1, controls.end(), [](auto* c) { return canEnter(*c); });
    if (next == controls.end())
        next = std::find_if(controls.begin(), controls.end(), [](auto* c) { return canEnter(*c); });
    if (next == controls.end()) return;
    turnTo(**next);
    if ((*next)->isShown()) form.moveFocus(**next);
}

void FormKayitTemizle(Session& session) {
    session.gFormKayit = FormKayit{};
}

void KayitGez(adodb::Recordset& rs, Gezinme yon) {
    Err ignored;
    if (yon == Gezinme::Onceki) {
        const bool moved = !rs.bof() && attempt(ignored, [&] { rs.movePrevious(); });
        if (!moved || rs.bof()) yon = Gezinme::Ilk;
    } else if (yon == Gezinme::Sonraki) {
        const bool moved = !rs.eof() && attempt(ignored, [&] { rs.moveNext(); });
        if (!moved || rs.eof()) yon = Gezinme::Son;
    }
    if (yon == Gezinme::Ilk) attempt(ignored, [&] { rs.moveFirst(); });
    if (yon == Gezinme::Son) attempt(ignored, [&] { rs.moveLast(); });
}

std::string KayitDurumu(const Err& err) {
    if (err.number == static_cast<std::int32_t>(ErrorNumber::NoCurrentRecord))
        return "Geçersiz kayıt (bookmark) !";
    if (err.number == static_cast<std::int32_t>(ErrorNumber::RecordDeleted)) return "Silinmiş kayıt !";
    return "Hatalı kayıt (" + std::to_string(err.number) + ", " + err.description + ") !";
}

std::string BosAlanSozu(const std::vector<std::string>& etiketler, const std::string& araya,
                        const std::string& sona) {
    std::string words;
    for (std::size_t i = 0; i < etiketler.size(); ++i) {
        if (i > 0) words += i + 1 == etiketler.size() ? sona : araya;
        words += etiketler[i];
    }
    return words + "Alanını Boş Geçemezsiniz";
}

} // namespace veldona
