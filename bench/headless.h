// The program itself, running on a copy of a shop with nobody in front of it: the real screens, a clock that
// stands still but for the program's own waits, and message boxes that are noted and closed.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "daybook/shopreckoning.h"
#include "ledger/mainscreen.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "sales/salescreen.h"

namespace veldona::bench {

class Headless {
public:
    // `root`: the folder that stands for drive C:. Raises std::runtime_error where the start fails.
    Headless(const std::string& root, DateTime now);
    ~Headless();
    Headless(const Headless&) = delete;
    Headless& operator=(const Headless&) = delete;

    [[nodiscard]] FrmMainVeldona& screen() { return *screen_; }
    [[nodiscard]] store::Database& database() { return *database_; }
    [[nodiscard]] Session& session() { return *session_; }
    [[nodiscard]] ShopReckoning& shop() { return *shop_; }

    // Finds the customer by typing the account number, as one change of the text.
    void type(const std::string& account);
    // Selects the sale in L3, which must list it; nothing is loaded yet.
    void select(const std::string& sale);
    void pressEnter();
    // The last step of a collection; the amount is in its box.
    void collect();
    // Opens the correction of the last schedule row of the sale on show; Enter then saves it as it stands.
    void openCorrection();
    // Opens the sale screen by its button on the main screen, the correction of the first payment of the sale
    // on show by its row; `work` is what the operator does there, and then the screen closes.
    void inSaleScreen(const std::function<void(FrmSatis&)>& work);
    void inPaymentCorrection(const std::function<void(Form&)>& work);
    // Raises std::runtime_error where the program said anything but `expected` since it was last asked ("":
    // nothing).
    void expectSaid(const std::string& expected);
    // The same where boxes without a word may have been shown.
    void expectBlankBoxes();

private:
    struct Nobody : FormHost {
        void runModal(Form& form) override;
        std::function<void(Form&)> work; // in the next screen that waits for its end
    };
    void inModal(const std::function<void(Form&)>& work, const std::function<bool()>& open);
    class NoOpener : public Opener {
        bool open(const std::string&) override { return true; }
    };

    Nobody host_;
    ManualClock clock_;
    RecordingDialogs dialogs_;
    EventPump events_;
    NoOpener opener_;
    Desktop desktop_;
    std::unique_ptr<Forms> forms_;
    std::unique_ptr<Session> session_;
    std::shared_ptr<ShopReckoning> shop_;
    std::shared_ptr<store::Database> database_;
    FrmMainVeldona* screen_ = nullptr;
};

} // namespace veldona::bench
