#include "apps/veldona/waiting.h"

#include <exception>
#include <memory>

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QThread>
#include <QVBoxLayout>

#include "platform/desktop/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

// Closed by nobody but the end of the work.
class WaitDialog : public QDialog {
public:
    WaitDialog(QWidget* parent, const QString& words) : QDialog(parent) {
        setWindowTitle(kProgramTitle);
        setWindowFlag(Qt::WindowCloseButtonHint, false);
        auto* column = new QVBoxLayout(this);
        column->addWidget(new QLabel(words));
        auto* bar = new QProgressBar;
        bar->setRange(0, 0);
        bar->setTextVisible(false);
        bar->setAccessibleName(words);
        column->addWidget(bar);
        setMinimumWidth(scaled(360));
    }
    void reject() override {}
};

// The thread is waited for on every way out.
class Worker {
public:
    explicit Worker(const std::function<void()>& work)
        : thread_(QThread::create([this, work] {
              try {
                  work();
              } catch (...) {
                  failure_ = std::current_exception();
              }
          })) {}
    ~Worker() { thread_->wait(); }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    [[nodiscard]] QThread& thread() const { return *thread_; }
    void finish() {
        thread_->wait();
        if (failure_) std::rethrow_exception(failure_);
    }

private:
    std::exception_ptr failure_;
    std::unique_ptr<QThread> thread_;
};

} // namespace

void runBeside(WindowHost& host, const QString& words, const std::function<void()>& work) {
    WaitDialog dialog(host.frontWindow(), words);
    Worker worker(work);
    QObject::connect(&worker.thread(), &QThread::finished, &dialog, &QDialog::accept);
    worker.thread().start();
    host.run(dialog);
    worker.finish();
}

} // namespace veldona
