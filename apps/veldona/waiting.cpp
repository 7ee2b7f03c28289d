#include "apps/veldona/waiting.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <memory>

#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QVBoxLayout>

#include "platform/desktop/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

// Closed by nobody but the end of the work, which is asked to end where it can be given up.
class WaitDialog : public QDialog {
public:
    WaitDialog(QWidget* parent, const QString& words)
        : QDialog(parent), words_(new QLabel(words)), bar_(new QProgressBar) {
        setWindowTitle(kProgramTitle);
        setWindowFlag(Qt::WindowCloseButtonHint, false);
        auto* column = new QVBoxLayout(this);
        column->addWidget(words_);
        bar_->setAccessibleName(words);
        column->addWidget(bar_);
        showFar(words, -1);
        setMinimumWidth(scaled(360));
    }
    void offerGivingUp() {
        button_ = new QPushButton("&Vazgeç");
        connect(button_, &QPushButton::clicked, this, &QDialog::reject);
        auto* row = new QHBoxLayout;
        row->addStretch();
        row->addWidget(button_);
        dynamic_cast<QVBoxLayout*>(layout())->addLayout(row);
    }
    void showFar(const QString& doing, int percent) {
        if (!isGivenUp_) words_->setText(doing);
        bar_->setRange(0, percent < 0 ? 0 : 100);
        bar_->setValue(percent);
        bar_->setTextVisible(percent >= 0);
    }
    void reject() override {
        if (button_ == nullptr) return;
        isGivenUp_ = true;
        button_->setEnabled(false);
        words_->setText("Vazgeçiliyor…");
    }
    [[nodiscard]] bool isGivenUp() const { return isGivenUp_; } // asked by the thread of the work

private:
    QLabel* words_;
    QProgressBar* bar_;
    QPushButton* button_ = nullptr;
    std::atomic<bool> isGivenUp_ = false;
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

void runUnder(WaitDialog& dialog, WindowHost& host, const std::function<void()>& work) {
    Worker worker(work);
    QObject::connect(&worker.thread(), &QThread::finished, &dialog, &QDialog::accept);
    worker.thread().start();
    host.run(dialog);
    worker.finish();
}

} // namespace

void runBeside(WindowHost& host, const QString& words, const std::function<void()>& work) {
    WaitDialog dialog(host.frontWindow(), words);
    runUnder(dialog, host, work);
}

void WindowSideWork::run(const std::string& words, const std::function<void(const Progress&)>& work) {
    WaitDialog dialog(host_.frontWindow(), QString::fromStdString(words));
    dialog.offerGivingUp();
    using std::chrono::steady_clock;
    auto shown = steady_clock::time_point{};
    std::string last;
    const Progress progress = [&](const std::string& doing, int percent) {
        constexpr std::chrono::milliseconds kBetweenLooks(50);
        if (const auto now = steady_clock::now(); doing != last || now - shown >= kBetweenLooks) {
            last = doing;
            shown = now;
            QMetaObject::invokeMethod(
                &dialog,
                [&dialog, doing, percent] { dialog.showFar(QString::fromStdString(doing), percent); },
                Qt::QueuedConnection);
        }
        return !dialog.isGivenUp();
    };
    runUnder(dialog, host_, [&] { work(progress); });
}

} // namespace veldona
