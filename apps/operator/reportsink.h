// The report shown last, as its text and as what can be written to a file.
//
// Whoever shows a report in this process hands it over here; the scenario looks at it afterwards.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace veldona::console {

struct ShownReport {
    std::string text; // page after page, the cells of a line parted by blanks
    std::function<void(const std::string& file)> writePdf;
};

class ReportSink {
public:
    void show(ShownReport report) {
        last_ = std::move(report);
        unseen_ = true;
    }
    [[nodiscard]] const std::optional<ShownReport>& last() const { return last_; }
    // One was shown that no expectation has looked at yet.
    [[nodiscard]] bool hasUnseen() const { return unseen_; }
    void markSeen() { unseen_ = false; }

private:
    std::optional<ShownReport> last_;
    bool unseen_ = false;
};

} // namespace veldona::console
