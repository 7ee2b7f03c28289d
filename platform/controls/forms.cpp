#include "platform/controls/forms.h"

#include <algorithm>
#include <new>

#include "platform/controls/control.h"
#include "platform/controls/handlers.h"
#include "platform/controls/names.h"

namespace veldona {

namespace {

constexpr std::int32_t kObjectUnloaded = 364;
constexpr std::int32_t kAlreadyShown = 400;
constexpr std::int32_t kObjectRequired = 424;

// Sets `place` for as long as it stands.
class Scoped {
public:
    Scoped(int& place, int value) : place_(place), before_(std::exchange(place, value)) {}
    ~Scoped() { place_ = before_; }
    Scoped(const Scoped&) = delete;
    Scoped& operator=(const Scoped&) = delete;

private:
    int& place_;
    int before_;
};

// As it is read: without the mark of the underlined letter, and without the blanks that keep captions in
// line.
std::string plainCaption(std::string_view caption) {
    std::string plain;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) ++i;
        plain += caption[i];
    }
    const std::size_t first = plain.find_first_not_of(' '), last = plain.find_last_not_of(" .");
    return first == plain.npos || last == plain.npos ? std::string() : plain.substr(first, last + 1 - first);
}

} // namespace

Forms::Hold::~Hold() {
    if (--forms_->holds_ > 0) return;
    // Taken out first: what a form's end unloads is buried by itself.
    const std::vector<std::unique_ptr<Form>> dead = std::exchange(forms_->graveyard_, {});
}

Forms::~Forms() {
    ended_ = true; // no event of a form that goes down with us
    while (!open_.empty())
        open_.pop_back();
}

void Forms::add(std::string name, Factory factory) {
    factories_[nameKey(name)] = std::move(factory);
}

bool Forms::isKnown(std::string_view name) const {
    return factories_.contains(nameKey(name));
}

Form& Forms::load(std::string_view name) {
    const Hold hold(*this);
    Form* form = ensureLoaded(name);
    if (!form) throw RuntimeError(kObjectUnloaded, "Nesne bellekten kaldırıldı");
    return *form;
}

Form* Forms::ensureLoaded(std::string_view name) {
    if (Form* form = loaded(name)) return form;
    const auto factory = factories_.find(nameKey(name));
    if (factory == factories_.end()) throw RuntimeError(kObjectRequired, "Nesne gerekli");
    std::unique_ptr<Form> made = factory->second(*this);
    Form& form = *made;
    open_.push_back({std::move(made)});
    host_->formLoaded(form);
    try {
        call(form.onLoad);
    } catch (const std::exception&) {
        remove(form);
        throw;
    }
    return form.isUnloaded() ? nullptr : &form;
}

void Forms::show(std::string_view name, Kip kip) {
    const Hold hold(*this);
    Form* form = ensureLoaded(name);
    if (!form) return;
    Open& entry = *place(*form);
    const bool again = entry.shown;
    if (again && kip == Kip::Modal)
        throw RuntimeError(kAlreadyShown, "Form zaten görüntüleniyor; kalıcı olarak gösterilemez");
    if (!again) entry.kip = kip;
    entry.shown = true;
    bringToFront(*form);
    host_->formShown(*form, open_.back().kip);
    activate(*form);
    if (kip == Kip::Modeless || form->isUnloaded()) return;
    host_->runModal(*form);
    if (ended_) throw ProcessEnd{};
}

void Forms::unload(Form& form) {
    const auto entry = place(form);
    if (entry == open_.end() || entry->unloading) return;
    const Hold hold(*this);
    entry->unloading = true;
    dispatch([&form] { call(form.onUnload); });
    const bool wasInFront = active() == &form;
    remove(form);
    Form* next = active();
    if (wasInFront && next) activate(*next);
}

void Forms::remove(Form& form) {
    const auto entry = place(form);
    if (entry == open_.end()) return;
    form.unloaded_ = true;
    graveyard_.push_back(std::move(entry->form));
    open_.erase(entry);
    host_->formUnloaded(form);
}

Form* Forms::loaded(std::string_view name) const {
    const auto found = std::find_if(open_.begin(), open_.end(),
                                    [name](const Open& each) { return sameName(each.form->name(), name); });
    return found == open_.end() ? nullptr : found->form.get();
}

std::vector<Form*> Forms::loadedForms() const {
    std::vector<Form*> forms;
    for (const Open& each : open_)
        forms.push_back(each.form.get());
    return forms;
}

Form* Forms::active() const {
    const auto front =
        std::find_if(open_.rbegin(), open_.rend(), [](const Open& each) { return each.shown; });
    return front == open_.rend() ? nullptr : front->form.get();
}

bool Forms::isOpenToOperator(const Form& form) const {
    const auto nearest = std::find_if(open_.rbegin(), open_.rend(), [&form](const Open& each) {
        return each.shown && (each.form.get() == &form || each.kip == Kip::Modal);
    });
    return !ended_ && nearest != open_.rend() && nearest->form.get() == &form && form.enabled();
}

void Forms::turnTo(Form& form) {
    if (active() == &form || !isOpenToOperator(form)) return;
    const Hold hold(*this);
    bringToFront(form);
    host_->formShown(form, open_.back().kip);
    activate(form);
}

std::vector<Forms::Open>::iterator Forms::place(const Form& form) {
    return std::find_if(open_.begin(), open_.end(),
                        [&form](const Open& each) { return each.form.get() == &form; });
}

void Forms::bringToFront(const Form& form) {
    const auto entry = place(form);
    std::rotate(entry, entry + 1, open_.end());
}

void Forms::activate(Form& form) {
    if (!form.activeControl()) focusFirst(form);
    dispatch([&form] {
        if (!form.isUnloaded()) call(form.onActivate);
    });
}

void Forms::focusFirst(Form& form) {
    for (Control* each : form.controls()) {
        if (!each->takesFocus() || !each->isShown() || !each->isUsable()) continue;
        form.moveFocus(*each);
        return;
    }
}

std::shared_ptr<void> Forms::begunAct(const ActWords& act) const {
    if (!beginAct || running_ - 1 > edge_) return nullptr;
    const Form* form = act.form != nullptr ? act.form : active();
    return beginAct(form != nullptr ? plainCaption(form->caption()) : std::string(), plainCaption(act.words));
}

void Forms::pressesFor(const Control& control) const {
    pressesFor(control.actWords());
}

void Forms::pressesFor(const std::string& caption) const {
    if (nameAct) nameAct(plainCaption(caption));
}

void Forms::dispatch(const std::function<void()>& event, const ActWords& act) {
    if (ended_) return;
    const Hold hold(*this);
    const Scoped depth(running_, running_ + 1);
    const std::shared_ptr<void> begun = begunAct(act);
    try {
        runCaught(event);
        if (running_ - 1 <= edge_ && onEventEnd) runCaught(onEventEnd);
    } catch (const ProcessEnd&) {
        if (running_ - 1 > edge_) throw;
    }
}

void Forms::runCaught(const std::function<void()>& event) {
    try {
        event();
    } catch (const RuntimeError& error) {
        if (!onUncaught) throw;
        call(onUncaught, error);
    } catch (const std::bad_alloc&) {
        if (!onUncaught) throw;
        call(onUncaught, RuntimeError(ErrorNumber::OutOfMemory));
    }
}

void Forms::runLoop(const std::function<void()>& loop) {
    {
        const Scoped edge(edge_, running_);
        loop();
    }
    if (ended_) throw ProcessEnd{};
}

void Forms::endProcess() {
    if (!ended_) {
        ended_ = true;
        host_->processEnded();
    }
    throw ProcessEnd{};
}

} // namespace veldona
