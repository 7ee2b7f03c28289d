// The disk fails at each read in turn of a step, or answers half of it. What happened is told, or what is
// shown is right all the same; the screen goes on, nothing wrong is written, and the step works once the disk
// does again.
#include <algorithm>
#include <iostream>
#include <optional>

#include <gtest/gtest.h>

#include "core/session.h"
#include "ledger/mainscreen.h"
#include "platform/controls/forms.h"
#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"

namespace veldona::faults {
namespace {

struct Step {
    const char* name;
    std::string before;
    std::string lines;
    bool writes = false;
};

void PrintTo(const Step& step, std::ostream* out) {
    *out << step.name;
}

// What the operator sees of a customer and a sale.
std::string ledgerShown(Till& till) {
    const auto* screen = dynamic_cast<FrmMainVeldona*>(till.session().forms.loaded("frmMainVeldona"));
    if (screen == nullptr) return "no screen";
    std::string text = screen->txtAdres.text() + '|';
    for (const Label* label :
         {&screen->Label7, &screen->Label8, &screen->Label9, &screen->Label11, &screen->Label21})
        text += label->caption() + '|';
    for (const ListBox* list : {&screen->L1, &screen->L2, &screen->L3, &screen->L4, &screen->L5,
                                &screen->List1, &screen->List2, &screen->List6}) {
        text += '\n';
        for (int row = 0; row < list->count(); ++row)
            text += list->list(row) + '|';
    }
    return text;
}

bool isClear(const std::string& text) {
    return text.find("okunamadı") != text.npos || text.find("bozuk") != text.npos;
}

class Reading : public ::testing::TestWithParam<Step> {
protected:
    Reading() {
        copyShop(drive);
        install();
        till.emplace(drive);
        till->play(openingLines());
    }
    ~Reading() override { disarm(); }

    // Nothing is in memory, so that a step reads all it needs.
    void forgetPages() {
        till->pragma("cache_size = 1");
        till->pragma("shrink_memory");
    }

    std::string playUndisturbed(const Step& step) {
        till->play(step.before + step.lines);
        static_cast<void>(till->said());
        return till->lastReport() + ledgerShown(*till);
    }

    std::string content() {
        std::string faults;
        std::string held = contentOf(drive, faults);
        EXPECT_EQ(faults, "");
        return held;
    }

    Drive drive;
    std::optional<Till> till;
};

TEST_P(Reading, IsToldAndWorksAgain) {
    const Step& step = GetParam();
    int failed = 0;
    for (const Fault fault : {Fault::FailedRead, Fault::ShortRead}) {
        const std::string right = playUndisturbed(step);
        const std::string held = content();
        for (int nth = 1; !HasFailure(); ++nth) {
            SCOPED_TRACE("at read " + std::to_string(nth));
            till->play(step.before);
            static_cast<void>(till->said());
            forgetPages();
            arm(fault, nth);
            till->play(step.lines);
            const bool struck = hasStruck();
            disarm();
            const std::string shown = till->lastReport() + ledgerShown(*till);
            const auto said = till->said();
            EXPECT_TRUE(shown == right || std::any_of(said.begin(), said.end(), isClear))
                << ::testing::PrintToString(said) << '\n'
                << shown;
            EXPECT_EQ(till->screenInFront(), "frmMainVeldona");
            EXPECT_EQ(content(), held);
            EXPECT_EQ(playUndisturbed(step), right) << "it does not work again";
            if (!struck) break;
            ++failed;
        }
    }
    std::cout << step.name << ": " << failed << " reads failed\n";
    EXPECT_GT(failed, 2);
}

std::vector<Step> steps() {
    return {
        {"Customer", "type Text1 \"8\"\n", "type Text1 \"7\"\n"},
        {"Sale", "type Text1 \"8\"\ntype Text1 \"7\"\n", "dblclick L3 0\n"},
        {"Report", "",
         "click cmdGunuGecenOdemeler\ndate dtRaporTarihiSon \"01/01/2027\"\nclick cmdRapor\nkey Esc\n"},
    };
}

INSTANTIATE_TEST_SUITE_P(Steps, Reading, ::testing::ValuesIn(steps()),
                         [](const auto& step) { return std::string(step.param.name); });

} // namespace
} // namespace veldona::faults
