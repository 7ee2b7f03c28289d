// A till: the real screens on a folder of its own, played line by line as an operator would.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/operator/stage.h"
#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/store/engine/engine.h"
#include "tests/support/files.h"

namespace veldona::faults {

// A temporary folder that goes again, standing for drive C:.
class Drive : public test::TemporaryFolder {
public:
    Drive() { std::filesystem::create_directories(books().parent_path()); }

    [[nodiscard]] std::filesystem::path books() const { return path() / "VELDONA/Veldona_Taksit/vorel.mdb"; }
    // The books as no screen sees them.
    [[nodiscard]] std::unique_ptr<store::Engine> engine() const;
    [[nodiscard]] std::string answer(const std::string& sql) const;
};

class Till : public FormHost {
public:
    explicit Till(const Drive& drive);

    // Lines of the operator console; a modal screen takes those that follow. A line "@name" runs `atMark`.
    void play(const std::string& lines);
    void perform(const std::string& line);
    std::function<void(const std::string& name)> atMark;
    // Hears of an act that the program refuses; where nobody does, it is raised.
    std::function<void(const std::string& text)> onShortfall;
    void follow(const std::string& lines); // played behind those that wait
    [[nodiscard]] Form& screen() const { return stage_.screen(); }
    [[nodiscard]] std::string shown() const; // all that stands on the screen in front
    [[nodiscard]] std::string screenInFront() const { return stage_.screen().name(); }
    // Texts said since the last call, questions too.
    [[nodiscard]] std::vector<std::string> said();
    [[nodiscard]] Session& session() { return stage_.process().session(); }
    [[nodiscard]] bool hasEnded() { return stage_.process().hasEnded(); }
    [[nodiscard]] std::string lastReport() const; // its text; "" where none was shown
    // Sets what the engine below the screens is to do otherwise than the program sets it.
    void pragma(const std::string& text);

private:
    void runModal(Form& form) override;
    void performNext();

    std::deque<std::string> lines_;
    console::Stage stage_;
};

} // namespace veldona::faults
