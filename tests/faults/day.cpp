#include "tests/faults/day.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>

#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "schema/tables.h"
#include "tests/support/answer.h"

namespace veldona::faults {
namespace {

constexpr int kNotTold = 3; // a child's exit code: an act did not say that it was done

void requireTold(Till& till, const Act& act) {
    const std::vector<std::string> said = till.said();
    if (act.doneMessage.empty()) return;
    if (std::find(said.begin(), said.end(), act.doneMessage) == said.end())
        throw std::runtime_error("not told as done: " + (said.empty() ? "(nothing)" : said.front()));
}

[[noreturn]] void playInChild(const Drive& drive, const std::vector<Act>& acts, int report,
                              const std::function<void()>& prepare,
                              const std::function<void(Till&)>& opened) {
    if (prepare) prepare();
    try {
        Till till(drive);
        till.play(openingLines());
        if (opened) opened(till);
        for (const Act& act : acts) {
            till.play(act.lines);
            requireTold(till, act);
            if (write(report, "+", 1) != 1) _exit(1);
        }
    } catch (const std::runtime_error&) {
        _exit(kNotTold);
    }
    _exit(0); // the till closed its file first
}

// Of the journal what tells neither the run nor that a backup was put back: each interrupted day must have
// left the very entries of what it did.
std::string rowsOf(store::Engine& engine, const std::string& table) {
    const std::string select = table == store::kJournalTable
                                   ? "SELECT ID, TABLO, TUR, ANAHTAR, ESKI, YENI FROM GUNLUK WHERE TUR <> 'N'"
                                   : "SELECT * FROM \"" + table + '"';
    return table + '\n' + test::answerOf(engine, select + " ORDER BY ID") + '\n';
}

std::string contentBy(store::Engine& engine) {
    std::string text;
    for (const store::TableDef& table : schema::tables())
        text += rowsOf(engine, table.name);
    return text;
}

std::unique_ptr<store::Engine> reader(const std::filesystem::path& file) {
    const auto password = passwordOfBooks(file.string()).value_or(deliveredPassword());
    return store::openSqlcipher(file.string(), password.text(), std::chrono::seconds(5));
}

} // namespace

void openShop(const Drive& drive) {
    Till(drive).play(R"op(database
insert "MUSTKAYIT (HSTNO,AD,SOYAD)" "'7','Ayşe','Yılmaz'" "'8','Çağrı','Işık'"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC)" "'8',4,9000000000000" "'7',5,9000000000000"
insert "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)" "'8',4,'1',1,9000000000000" "'7',5,'1',1,9000000000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'8',4,'20/12/2026',9000000000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',5,'20/12/2026',9000000000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'8',4,'10/11/2026 09:00:00',100000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',5,'10/11/2026 09:00:00',100000000"
)op");
}

void copyShop(const Drive& drive) {
    static const Drive original;
    if (!std::filesystem::exists(original.books())) openShop(original);
    std::filesystem::copy_file(original.books(), drive.books());
}

std::string openingLines(int customer) {
    return "clock \"22/11/2026 10:30:00\"\nstart\ntype Text1 \"" + std::to_string(customer) +
           "\"\ndblclick L3 0\n";
}

Act post(int lira) {
    return {"put mskOdenenPara \"" + std::to_string(lira) + "\"\nclick Command1\n",
            "KAYIT İŞLEMİ TAMAMLANDI"};
}

Act correctPayment(int lira) {
    return {"dblclick L1 0\nput Text1 \"" + std::to_string(lira) + "\"\nclick Command1\n",
            "DÜZELTME İŞLEMİ GERÇEKLEŞTİ"};
}

Act saveSale() {
    return {"click cmdSatis\nput MskToplamUcret \"1000\"\nput MskAlinanPesinat \"200\"\nput MskTaksitAdedi "
            "\"4\"\n"
            "click cmdKaydet\nclick cmdCikis\ntype Text1 \"7\"\ndblclick L3 1\n",
            "İşlem Tamamlandı"};
}

Act deleteSale() {
    return {
        "type Text1 \"7\"\ndblclick L3 0\nanswer yes\nclick cmdIslemNoSil\ntype Text1 \"7\"\ndblclick L3 0\n",
        ""};
}

Act takeBack() {
    return {"key Ctrl+Z\nanswer yes\nkey F4\nkey Esc\n", ""};
}

std::vector<Act> fullDay(int rounds) {
    std::vector<Act> acts;
    for (int i = 0; i < rounds; ++i) {
        const int lira = 1000 + 10 * i;
        for (const Act& act : {post(lira), correctPayment(lira + 1), saveSale(), post(lira + 2), deleteSale(),
                               takeBack(), deleteSale()})
            acts.push_back(act);
    }
    return acts;
}

std::string contentOf(const Drive& drive, std::string& faults) {
    return contentOf(drive.books(), faults);
}

std::string contentOf(const std::filesystem::path& file, std::string& faults) {
    try {
        const auto engine = reader(file);
        if (const auto check = test::answerOf(*engine, "PRAGMA integrity_check"); check != "ok")
            faults += check + "; ";
        if (const journal::Chain chain = journal::examine(*engine); chain.broken)
            faults += describe(chain) + "; ";
        return contentBy(*engine);
    } catch (const store::StoreError& error) {
        faults += "the file does not open: " + error.description();
        return {};
    }
}

Files filesBelow(const std::filesystem::path& folder) {
    Files files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file()) continue;
        files[std::filesystem::relative(entry.path(), folder)] = test::bytesOf(entry.path());
    }
    return files;
}

Day::Day(std::vector<Act> acts) : acts_(std::move(acts)) {
    const Drive drive;
    copyShop(drive);
    const auto engine = reader(drive.books());
    Till till(drive);
    till.play(openingLines());
    contents_.push_back(contentBy(*engine));
    for (const Act& act : acts_) {
        till.play(act.lines);
        requireTold(till, act);
        contents_.push_back(contentBy(*engine));
        if (contents_.back() == contents_[contents_.size() - 2])
            throw std::logic_error("an act wrote nothing");
    }
}

Day::Ending Day::play(const Drive& drive, const std::function<void()>& prepare,
                      const std::function<void(Till&)>& opened, const Interrupt& interrupt) const {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) throw std::runtime_error("no pipe");
    const pid_t child = fork();
    if (child < 0) throw std::runtime_error("no child process");
    if (child == 0) playInChild(drive, acts_, pipeEnds[1], prepare, opened);
    ::close(pipeEnds[1]);
    Ending ending;
    const AwaitActs awaitActs = [&](int acts) {
        char told = 0;
        while (ending.done < acts && read(pipeEnds[0], &told, 1) == 1)
            ++ending.done;
    };
    if (interrupt) interrupt(child, awaitActs);
    awaitActs(length() + 1); // to the end of what was told
    ::close(pipeEnds[0]);
    waitpid(child, &ending.status, 0);
    return ending;
}

std::string Day::wrongWith(const Drive& drive, const Ending& ending) const {
    if (WIFEXITED(ending.status) && WEXITSTATUS(ending.status) == kNotTold)
        return "act " + std::to_string(ending.done + 1) + " did not say that it was done";
    std::string faults;
    const std::string content = contentOf(drive, faults);
    if (!faults.empty()) return faults;
    const auto done = static_cast<std::size_t>(ending.done);
    if (content == contents_[done] || (done < acts_.size() && content == contents_[done + 1])) return {};
    const int known = actsIn(content);
    if (known < 0) return "the books hold half an act behind act " + std::to_string(ending.done);
    return std::to_string(ending.done) + " acts were told of as done, the books hold " +
           std::to_string(known);
}

int Day::actsIn(const std::string& content) const {
    const auto known = std::find(contents_.rbegin(), contents_.rend(), content);
    return static_cast<int>(contents_.rend() - known) - 1;
}

int effort() {
    const char* asked = std::getenv("VELDONA_FAULTS");
    return asked == nullptr ? 1 : std::max(1, std::atoi(asked));
}

} // namespace veldona::faults
