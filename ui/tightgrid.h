// A window that has two arrangements: as it is drawn, and a narrower one where that has no room.
//
// A widget that stands elsewhere in the narrow one says so in the .ui file by the property "tightCell", as
// "row column rows columns" of the grid it is drawn in.
#pragma once

#include <vector>

#include <QObject>

class QGridLayout;
class QLabel;
class QWidget;

namespace veldona {

class TightGrid : public QObject {
public:
    // Belongs to the window. Does nothing where no widget has a second place.
    explicit TightGrid(QWidget& window);

    // Measures both arrangements anew and takes the one that fits.
    void follow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Cell {
        int row = 0, column = 0, rows = 1, columns = 1;
    };
    struct Place {
        QWidget* widget;
        QGridLayout* grid;
        Cell roomy;
        Cell tight;
    };
    void arrange(bool tight);
    void fit();
    [[nodiscard]] int neededWidth() const;

    QWidget& window_;
    std::vector<Place> places_;
    std::vector<QLabel*> heads_; // of columns, in two lines there
    int roomyWidth_ = 0;         // what the drawn arrangement needs, as far as it has been seen
    bool tight_ = false;
};

} // namespace veldona
