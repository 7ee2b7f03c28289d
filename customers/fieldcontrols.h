// The controls that a screen has for fields of a customer: made of the fields' rows, each with its label,
// which is named as the control with "lbl" before it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/customerfields.h"
#include "platform/controls/controls.h"
#include "platform/controls/lists.h"

namespace veldona {

class FieldControl {
public:
    FieldControl(Form& form, const CustomerField& itsField, const FieldEntry& entry);

    const CustomerField& field;
    [[nodiscard]] Control& control() const { return *control_; }
    [[nodiscard]] std::string text() const { return control_->shownText(); }
    void setText(const std::string& text); // a date as one reads it, or ""
    // Behind what happens already when something is entered.
    void alsoOnInput(const std::function<void()>& act);
    void placeIn(Control& holder);

private:
    FieldEntry::Kind kind_;
    std::unique_ptr<Label> label_;
    std::unique_ptr<Control> control_;
};

class FieldControls {
public:
    FieldControls(Form& form, const CustomerFieldRefs& fields, FieldEntry CustomerField::*entry);

    [[nodiscard]] const std::vector<std::unique_ptr<FieldControl>>& all() const { return all_; }
    // By its own name; a name that no row has is a mistake of the program's, and ends the screen's making.
    template <class Kind> [[nodiscard]] Kind& at(std::string_view name) const {
        return dynamic_cast<Kind&>(find(name).control());
    }
    // nullptr where no row of them tests this column.
    [[nodiscard]] const FieldControl* of(const CustomerField& field) const;

private:
    [[nodiscard]] FieldControl& find(std::string_view name) const;
    std::vector<std::unique_ptr<FieldControl>> all_;
};

// A frame of the card with the fields that stand in it.
class FieldFrame : public Frame {
public:
    FieldFrame(Form& form, std::string name, std::string words, CustomerField::Frame frame);
    FieldControls fields;
};

} // namespace veldona
