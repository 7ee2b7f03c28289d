// The few words that the toolkit itself puts on the screen, in Turkish: the menu of a text field, a
// calendar's tips, the dialogs that ask for a file or a printer.
#pragma once

#include <QTranslator>

namespace veldona {

class TurkishTexts : public QTranslator {
public:
    using QTranslator::QTranslator;
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int n) const override;
};

} // namespace veldona
