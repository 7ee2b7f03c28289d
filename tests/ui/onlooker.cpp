// Who stands before the program's windows in a test of the whole program: a plugin that the toolkit loads
// where QT_QPA_GENERIC_PLUGINS names it. It writes what each box says to the standard output and closes it,
// says when a window of the program is there, gives up where a password is asked for, and types what it is
// told by lines of the standard input:
//
//   type WIDGET TEXT    puts the text into the widget of that name
//   quit                closes all windows
#include <unistd.h>

#include <iostream>
#include <string>

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QGenericPlugin>
#include <QLineEdit>
#include <QMessageBox>
#include <QSocketNotifier>
#include <QTimer>

namespace veldona {

class Onlooker : public QObject {
public:
    Onlooker() : input_(STDIN_FILENO, QSocketNotifier::Read) {
        qApp->installEventFilter(this);
        connect(&input_, &QSocketNotifier::activated, this, [this] { readInput(); });
    }

    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Show) shown(object);
        return QObject::eventFilter(object, event);
    }

private:
    static void say(const QString& text) { std::cout << text.toStdString() << std::endl; }

    static void shown(QObject* object) {
        if (auto* box = qobject_cast<QMessageBox*>(object)) {
            say("box: " + box->text() + " " + box->informativeText());
            QTimer::singleShot(0, box, [box] {
                say("closed");
                box->close();
            });
        } else if (auto* window = qobject_cast<QWidget*>(object); window != nullptr && window->isWindow()) {
            say("window: " + window->objectName());
            if (auto* question = qobject_cast<QDialog*>(window); window->objectName() == "passwordQuestion")
                QTimer::singleShot(0, question, &QDialog::reject);
        }
    }

    void readInput() {
        char some[1024];
        const auto count = ::read(STDIN_FILENO, some, sizeof some);
        if (count <= 0) {
            input_.setEnabled(false);
            return;
        }
        text_.append(some, static_cast<std::size_t>(count));
        for (auto end = text_.find('\n'); end != text_.npos; end = text_.find('\n')) {
            const QString line = QString::fromStdString(text_.substr(0, end));
            text_.erase(0, end + 1);
            perform(line);
        }
    }

    static void perform(const QString& line) {
        if (line == "quit") return QApplication::closeAllWindows();
        const QString name = line.section(' ', 1, 1);
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* edit = qobject_cast<QLineEdit*>(widget);
            if (edit == nullptr || edit->objectName() != name) continue;
            edit->setFocus();
            edit->selectAll();
            edit->insert(line.section(' ', 2));
            return say("typed");
        }
        say("no such widget: " + name);
    }

    QSocketNotifier input_;
    std::string text_;
};

class OnlookerPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "onlooker.json")

public:
    QObject* create(const QString&, const QString&) override { return new Onlooker; }
};

} // namespace veldona

#include "onlooker.moc"
