// What the menu "Yedek" does beside the screens: the way back to a backup, also where the books do not open.
#pragma once

#include <optional>
#include <set>
#include <string>

#include "platform/desktop/clock.h"
#include "platform/desktop/media.h"
#include "platform/desktop/paths.h"

namespace veldona {

class WindowHost;

class BackupMenu {
public:
    BackupMenu(WindowHost& host, Clock& clock, const Paths& paths, Media* media = nullptr);

    // Lets the operator choose one and agree to what is lost by it. Nothing is changed yet: the books are
    // still open. True: chosen() says which.
    bool choose();
    void choose(std::string backup) { chosen_ = std::move(backup); } // one that was agreed to before
    [[nodiscard]] const std::optional<std::string>& chosen() const { return chosen_; }

    // Puts the chosen one in the place of the books, which nobody may have open any more, and tells of it or
    // of what went wrong.
    void putBack();
    // The books cannot be read: asks whether to go back to a backup.
    [[nodiscard]] bool offerAfterFailedStart();

private:
    [[nodiscard]] bool hasBackups() const;
    [[nodiscard]] std::set<std::string> folders() const;
    // A backup keeps the password under which it was taken: asks for one that nobody here knows.
    void knowPasswordOf(const std::string& backup);
    [[nodiscard]] bool agrees(const std::string& backup);
    void tell(const std::string& text, bool isFailure);
    // False where `act` failed; it has been told of, with `kept`: what the failure left as it was.
    template <class Act> bool attemptReported(Act act, const char* kept);

    WindowHost& host_;
    Clock& clock_;
    Media* media_;
    std::string books_;
    std::string folder_;
    std::optional<std::string> chosen_;
};

} // namespace veldona
