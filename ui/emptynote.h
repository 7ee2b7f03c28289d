// What a list says while it has no rows: nothing found looks otherwise like nothing asked.
#pragma once

#include <QObject>

class QAbstractItemView;
class QLabel;

namespace veldona {

class EmptyNote : public QObject {
public:
    // Belongs to the view, which has its model already. The words are its property "whenEmpty"; without them
    // it says nothing.
    explicit EmptyNote(QAbstractItemView& view);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow();

    QAbstractItemView& view_;
    QLabel* words_ = nullptr;
};

} // namespace veldona
