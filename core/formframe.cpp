#include "core/formframe.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

struct BarTool {
    const char* key;
    const char* caption;
};

constexpr BarTool kTools[] = {
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
        {FormModu::Navigation, {"cmdOnceki", "cmdSonraki", "cmdYeni", "cmdDegistir", "cmdSil", "cmdCikis"}},
        {FormModu::Search, {"cmdTemizle", "cmdBul", "cmdYeni", "cmdDegistir", "cmdSil", "cmdCikis"}},
        {FormModu::Yeni, {"cmdVazgec", "cmdKaydet"}},
        {FormModu::Change, {"cmdVazgec", "cmdKaydet"}},
        {FormModu::AllTools,
         {"cmdOnceki", "cmdSonraki", "cmdYeni", "cmdDegistir", "cmdSil", "cmdYanile", "cmdDevirBakiye",
          "cmdBul", "cmdCikis", "cmdMail", "cmdNotDefteri", "cmdHesapMakinesi"}},
        {FormModu::ReadOnly, {"cmdCikis", "cmdDegistir"}},
        {FormModu::SaveOnly, {"cmdCikis", "cmdKaydet"}},
    };
    static const std::vector<const char*> none;
    const auto found = byState.find(durum);
    return found == byState.end() ? none : found->second;
}

} // namespace

void buildBar(ToolBar& bar) {
    for (const BarTool& toolName : kTools)
        bar.add(toolName.key, toolName.caption);
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

bool toolOpen(const ToolBar& bar, std::string_view toolName) {
    const ToolBar::Tool* tool = bar.find(toolName);
    return tool && tool->visible && tool->enabled && bar.isShown() && bar.isUsable();
}

void toolKeys(const ToolBar& bar, KeyEvent& event) {
    static constexpr std::array<std::pair<Key, const char*>, 5> kKeys = {{{Key::F2, "cmdKaydet"},
                                                                          {Key::F3, "cmdYeni"},
                                                                          {Key::F4, "cmdVazgec"},
                                                                          {Key::F5, "cmdDegistir"},
                                                                          {Key::F6, "cmdSil"}}};
    for (const auto& [key, toolName] : kKeys) {
        if (event.key != key) continue;
        event.swallowed = true;
        if (!toolOpen(bar, toolName)) continue;
        bar.form().forms().pressesFor(bar.find(toolName)->caption);
        call(bar.onToolClick, std::string(toolName));
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

void markFocus(Form& form) {
    for (Control* control : form.controls()) {
        if (!control->isField()) continue;
        control->onGotFocus = [control] {
            HFocus(*control);
            BGFocus(*control);
        };
        control->onLostFocus = [control] { BGLoss(*control); };
    }
}

void nextField(Form& form) {
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

void walkRecords(adodb::Recordset& rs, Navigation yon) {
    Err ignored;
    if (yon == Navigation::Previous) {
        const bool moved = !rs.bof() && attempt(ignored, [&] { rs.movePrevious(); });
        if (!moved || rs.bof()) yon = Navigation::Ilk;
    } else if (yon == Navigation::Next) {
        const bool moved = !rs.eof() && attempt(ignored, [&] { rs.moveNext(); });
        if (!moved || rs.eof()) yon = Navigation::Son;
    }
    if (yon == Navigation::Ilk) attempt(ignored, [&] { rs.moveFirst(); });
    if (yon == Navigation::Son) attempt(ignored, [&] { rs.moveLast(); });
}

std::string saveStatus(const Err& err) {
    if (err.number == static_cast<std::int32_t>(ErrorNumber::NoCurrentRecord))
        return "Geçersiz kayıt (bookmark) !";
    if (err.number == static_cast<std::int32_t>(ErrorNumber::RecordDeleted)) return "Silinmiş kayıt !";
    return "Hatalı kayıt (" + std::to_string(err.number) + ", " + err.description + ") !";
}

void closeOnEscape(Form& form) {
    form.onKeyPress = [&form](KeyPress& press) {
        if (press.character != static_cast<char32_t>(Key::Escape)) return;
        press.swallowed = true;
        form.forms().unload(form);
    };
}

std::string emptyFieldWords(const std::vector<std::string>& captions, const std::string& between,
                            const std::string& atEnd) {
    std::string words;
    for (std::size_t i = 0; i < captions.size(); ++i) {
        if (i > 0) words += i + 1 == captions.size() ? atEnd : between;
        words += captions[i];
    }
    return words + "Alanını Boş Geçemezsiniz";
}

} // namespace veldona
