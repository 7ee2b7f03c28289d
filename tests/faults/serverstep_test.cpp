// One operator, two engines: whatever comes to the operator's mind, every list, label and message is the same
// on books in a file and on a server, and so is every row in the end.
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/books.h"
#include "platform/controls/control.h"
#include "platform/controls/menus.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/tablerows.h"
#include "schema/tables.h"
#include "tests/faults/day.h"
#include "tests/faults/servershop.h"

namespace veldona::faults {
namespace {

constexpr unsigned kSeed = 20261123;
constexpr int kActs = 150;

// What tells two engines apart: letters of the Turkish alphabet, Nulls, equal days and amounts, rows that are
// not in the order of their days.
constexpr const char* kShop = R"op(clock "22/11/2026 10:30:00"
start
insert "MUSTKAYIT (HSTNO,AD,SOYAD,GSM)" "'1','Işıl','Kaya','532'" "'2','ışık',NULL,NULL"
insert "MUSTKAYIT (HSTNO,AD,SOYAD,GSM)" "'3',NULL,'İnci',NULL"
insert "MUSTKAYIT (HSTNO,AD,SOYAD,GSM)" "'9','Çelik','Kaya',NULL" "'10','Şule','Ünal','533'"
insert "MUSTKAYIT (HSTNO,AD,SOYAD,GSM)" "'a1','Sude','Öz',''"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,PESINAT)" "'7',12,500000000,0" "'7',11,250000000,NULL"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,PESINAT)" "'1',13,750000000,50000000"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,PESINAT)" "'8',14,90000000,0" "'9',15,100000000,0"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,PESINAT)" "'10',16,100000000,0"
insert "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)" "'7',12,'2',2,250000000" "'7',11,'1',1,250000000"
insert "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)" "'1',13,NULL,3,250000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',12,'20/11/2026',250000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',12,'20/10/2026',250000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',11,NULL,125000000" "'7',11,'05/11/2026',125000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'1',13,'05/11/2026',350000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'1',13,'05/11/2026',400000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'9',15,'01/12/2026',100000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'10',16,'05/11/2026',100000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',12,'19/11/2026',30000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',12,'01/11/2026',20000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',12,NULL,10000000" "'1',13,'22/11/2026',NULL"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'1',13,'22/11/2026',5000000"
)op";

class Operator {
public:
    explicit Operator(unsigned seed) : random_(seed) {}

    // The line of an act that the screen allows, or nearly so.
    std::string next(const Form& screen) {
        if (pick(4) == 0) return std::string("answer ") + (pick(3) > 0 ? "yes" : "no");
        if (pick(5) == 0) return "key " + oneOf({"F2", "F3", "F4", "Enter", "Enter", "Down", "Up", "Esc"});
        if (screen.name() == "frmMainVeldona" && pick(4) == 0)
            return "type Text1 \"" + oneOf({"7", "8", "1", "9", "10", ""}) + '"';
        std::vector<Control*> within;
        for (Control* control : screen.controls())
            if (control->isInReach() && isTried(*control)) within.push_back(control);
        return within.empty() ? "key Esc" : actOn(*within[pick(within.size())]);
    }

private:
    // What leads out of the program, or to files of the machine, is no matter of the books.
    static bool isTried(const Control& control) {
        const std::string& name = control.name();
        const bool leaves = name == "cmdCikis" && control.form().name() == "frmMainVeldona";
        return !leaves && dynamic_cast<const MenuItem*>(&control) == nullptr &&
               dynamic_cast<const Menu*>(&control) == nullptr && name.find("Yedek") == name.npos;
    }
    std::string actOn(const Control& control) {
        const std::string name = control.form().name() + '.' + control.name();
        const std::string text = oneOf({"7", "8", "1", "100", "12,50", "1.000", "0", "-5", "4", "05/12/2026",
                                        "Işık", "çağ", "%", "O'Neil", "", "KAYA", "99999999"});
        if (control.mark()) return "check " + name + (pick(2) == 0 ? " on" : " off");
        if (control.isField()) switch (pick(4)) {
            case 0:
                return "type " + name + " \"" + text + '"';
            case 1:
                return "date " + name + " \"" + oneOf({"01/11/2026", "20/12/2026", "31/01/2027"}) + '"';
            default:
                return "put " + name + " \"" + text + '"';
            }
        if (const int rows = control.rowsToClick(); rows > 0)
            return (pick(2) == 0 ? "click " : "dblclick ") + name + ' ' +
                   std::to_string(pick(static_cast<std::size_t>(std::min(rows, 8))));
        return "click " + name;
    }
    std::size_t pick(std::size_t below) { return random_() % below; }
    std::string oneOf(const std::vector<std::string>& all) { return all[pick(all.size())]; }

    std::mt19937 random_;
};

std::string with(std::string text, const std::string& part, const std::string& in) {
    for (std::size_t at = 0; (at = text.find(part, at)) != text.npos; at += in.size())
        text.replace(at, part.size(), in);
    return text;
}

// One that keeps what an operator would see behind each act.
class Watched {
public:
    explicit Watched(const Drive& drive) : folder_(drive.path().string()), till_(drive) {
        till_.onShortfall = [this](const std::string& text) { seen_ += "refused: " + text + '\n'; };
    }
    // `next`: the act that follows; "" ends the session.
    std::vector<std::string> play(const std::function<std::string(const Form&)>& next) {
        till_.atMark = [&](const std::string&) {
            look();
            const std::string line = till_.hasEnded() ? "" : next(till_.screen());
            if (!line.empty()) till_.follow(line + "\n@seen\n");
        };
        till_.play(std::string(kShop) + "@seen\n");
        return std::move(all_);
    }

private:
    void look() {
        for (const std::string& text : till_.said())
            seen_ += "said: " + text + '\n';
        if (!till_.hasEnded()) seen_ += till_.shown();
        seen_ += till_.lastReport();
        all_.push_back(with(std::exchange(seen_, {}), folder_, "C:"));
    }

    std::string folder_, seen_;
    Till till_;
    std::vector<std::string> all_;
};

// The lines that one has and the other hasn't.
std::string difference(const std::string& one, const std::string& other) {
    std::istringstream left(one), right(other);
    std::string text;
    for (std::string a, b; text.size() < 2000;) {
        const bool isLeft = static_cast<bool>(std::getline(left, a)),
                   isRight = static_cast<bool>(std::getline(right, b));
        if (!isLeft && !isRight) break;
        if (a != b) text.append("file:   ").append(a).append("\nserver: ").append(b).append("\n");
    }
    return text;
}

// Every row; of the journal what does not tell the run.
std::string rowsOf(store::Engine& engine) {
    const store::Inquiry books(engine);
    std::string text;
    for (const store::TableDef& table : schema::tables()) {
        store::Catalog::Relation compared{table.name, table.columns, false, {}};
        if (table.name == store::kJournalTable)
            std::erase_if(compared.columns,
                          [](const auto& column) { return column.name == "ISLEM" || column.name == "OZET"; });
        for (store::TableRows rows(books, compared); rows.next();) {
            text += table.name;
            for (int column = 0; column < static_cast<int>(compared.columns.size()); ++column) {
                const Value value = store::storedValue(rows.row(), column);
                text += '|' + (value.isNull() ? "NULL" : toText(value));
            }
            text += '\n';
        }
    }
    return text;
}

// Where the two part, or "".
std::string wrongWith(unsigned seed) {
    const Drive file;
    copyShop(file);
    const ServerShop shop;
    Operator someone(seed);
    std::vector<std::string> lines;
    const auto onFile = Watched(file).play([&](const Form& screen) {
        if (lines.size() == kActs) return std::string();
        return lines.emplace_back(someone.next(screen));
    });
    std::size_t played = 0;
    const auto onServer = Watched(shop).play(
        [&](const Form&) { return played < lines.size() ? lines[played++] : std::string(); });
    for (std::size_t i = 0; i < std::max(onFile.size(), onServer.size()); ++i) {
        const std::string left = i < onFile.size() ? onFile[i] : "",
                          right = i < onServer.size() ? onServer[i] : "";
        if (left == right) continue;
        std::string acts;
        for (std::size_t k = 0; k < i && k < lines.size(); ++k)
            acts += lines[k] + '\n';
        return acts + difference(left, right);
    }
    const std::chrono::seconds wait(5);
    return difference(rowsOf(*openBooksToRead(file.books().string(), wait)),
                      rowsOf(*openBooksToRead(store::placeOf(shop.books()), wait)));
}

TEST(ServerStep, BothEnginesShowTheSame) {
    for (int session = 0; session < 6 * effort(); ++session) {
        const unsigned seed = kSeed + static_cast<unsigned>(session);
        ASSERT_EQ(wrongWith(seed), "") << "seed " << seed;
    }
}

} // namespace
} // namespace veldona::faults
