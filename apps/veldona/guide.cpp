#include "apps/veldona/guide.h"

#include <map>

#include <QDialog>
#include <QHBoxLayout>
#include <QImage>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QVBoxLayout>

#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

const QUrl kGuide("qrc:/kilavuz/kilavuz.md");

// As the links of the guide write it: "12. Eski dosyadan geçiş" is 12-eski-dosyadan-geçiş.
QString anchorOf(const QString& heading) {
    static const QRegularExpression dropped("[^\\w\\s-]", QRegularExpression::UseUnicodePropertiesOption);
    return heading.toLower().remove(dropped).trimmed().replace(' ', '-');
}

class GuidePage : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& url) override {
        QVariant loaded = QTextBrowser::loadResource(type, url);
        if (type != QTextDocument::ImageResource) return loaded;
        QImage picture;
        if (!picture.loadFromData(loaded.toByteArray())) return loaded;
        // Most stand in a step of a list.
        const int room = viewport()->width() -
                         static_cast<int>(2 * document()->documentMargin() + document()->indentWidth());
        if (room <= 0 || picture.width() <= room) return picture;
        return picture.scaledToWidth(room, Qt::SmoothTransformation);
    }

protected:
    void doSetSource(const QUrl& url, QTextDocument::ResourceType type) override {
        QTextBrowser::doSetSource(url, type);
        nameHeadings();
        if (url.hasFragment()) scrollToAnchor(url.fragment(QUrl::FullyDecoded));
    }

private:
    // A heading has no name of its own that a link could lead to.
    void nameHeadings() {
        static const QRegularExpression number("^\\d+-");
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() == 0 || block.begin().atEnd()) continue;
            if (block.begin().fragment().charFormat().isAnchor()) return; // they have them
            const QString name = anchorOf(block.text());
            QTextCharFormat named;
            named.setAnchor(true);
            named.setAnchorNames({name, QString(name).remove(number)});
            QTextCursor heading(block);
            heading.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            heading.mergeCharFormat(named);
        }
    }
};

class GuideWindow : public QDialog {
public:
    explicit GuideWindow(QWidget* over) : QDialog(over), page_(new GuidePage) {
        setWindowTitle("Kılavuz");
        setWindowFlag(Qt::WindowMaximizeButtonHint);
        setAttribute(Qt::WA_DeleteOnClose);
        page_->setObjectName("kilavuz");
        page_->setAccessibleName("Kılavuz");
        page_->setOpenExternalLinks(true);
        page_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // pictures are fitted to what it leaves
        page_->document()->setDocumentMargin(scaled(16));
        auto* row = new QHBoxLayout;
        const auto add = [&](const QString& words, auto act) {
            auto* button = new QPushButton(words);
            button->setAutoDefault(false);
            connect(button, &QPushButton::clicked, this, act);
            row->addWidget(button);
            return button;
        };
        add("&Baştan", [this] { page_->setSource(kGuide); });
        QPushButton* back = add("&Geri", [this] { page_->backward(); });
        back->setEnabled(false);
        connect(page_, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
        row->addStretch();
        add("&Kapat", [this] { close(); });
        auto* column = new QVBoxLayout(this);
        column->addWidget(page_, 1);
        column->addLayout(row);
        resize(QSize(scaled(900), scaled(720)).boundedTo(screen()->availableSize() * 17 / 20));
    }
    void showChapter(const QString& chapter) {
        show();
        QUrl place = kGuide;
        place.setFragment(chapter.isEmpty() ? QString() : chapter);
        page_->setSource(place);
        page_->setFocus();
        raise();
        activateWindow();
    }

private:
    GuidePage* page_;
};

} // namespace

QString chapterOf(const std::string& screen) {
    static const std::map<std::string, QString> chapters = {
        {"frmMainVeldona", "ana-ekran"},
        {"frmAntetBilgisi", "programı-ilk-kez-açmak"},
        {"frmArama", "hesabı-ve-satışı-aramak"},
        {"frmBugun", "bugün-aranacaklar"},
        {"frmCariEkle", "yeni-müşteri-kartı"},
        {"frmCarihesapSec", "müşteriyi-bulmak"},
        {"frmSatis", "satış"},
        {"frmSonIslemler", "son-işlemler-ve-geri-almak"},
        {"frmYedek", "yedek"},
        {"frmParola", "defterin-parolası"},
        {"frmGunluk", "günlük"},
        {"frmCrNesne", "yazdırma-ve-pdf"},
        {"frmGrafik", "grafikler"},
        {"rprodemesigecen", "günü-geçenler"},
        {"rprbeklenentahsilat", "beklenenler"},
        {"rptGelirGider", "tahsilat-listesi"},
        {"taksitodduzelt", "taksidin-gününü-ya-da-tutarını-düzeltme"},
        {"taksitmustduzelt", "ödeme-düzeltme-ve-silme"},
    };
    const auto found = chapters.find(screen);
    return found == chapters.end() ? QString() : found->second;
}

void offerGuide(WindowHost& host) {
    host.showGuide = [shown = QPointer<GuideWindow>()](QWidget* over, const std::string& screen) mutable {
        // A modal window lets through what belongs to it alone.
        if (shown && shown->parentWidget() != over) delete shown;
        if (!shown) shown = new GuideWindow(over);
        shown->showChapter(chapterOf(screen));
    };
}

} // namespace veldona
