// The power goes while books are made, while a backup is taken, while one is put back and while the books get
// another password: at each call in turn of the programs themselves that changes a file or a name.
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include <gtest/gtest.h>

#include "core/bookpasswords.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kCut = 77, kCutAtEnd = 78;

struct ToolCut {
    int nth;
    std::string tail;
    const char* drive;
};

Outcome cutOff(const std::string& program, const Program::Words& words, const fs::path& folder,
               const ToolCut& cut, const Program::Words& input) {
    const char* sanitizer = std::getenv("ASAN_OPTIONS");
    const Outcome outcome = runProgram(program, words,
                                       {{"LD_PRELOAD", POWERCUT},
                                        {"ASAN_OPTIONS", std::string(sanitizer == nullptr ? "" : sanitizer) +
                                                             ":verify_asan_link_order=0:detect_leaks=0"},
                                        {"VELDONA_CUT_FOLDER", folder.string()},
                                        {"VELDONA_CUT_AT", std::to_string(cut.nth)},
                                        {"VELDONA_CUT_TAIL", cut.tail},
                                        {"VELDONA_CUT_DRIVE", cut.drive}},
                                       input);
    fs::remove_all(folder.string() + ".gone");
    return outcome;
}

bool hasShown(const Outcome& outcome, const std::string& words) {
    return outcome.said.find(words) != outcome.said.npos;
}

void require(const Outcome& outcome) {
    if (outcome.code != 0) throw std::runtime_error("it failed: " + outcome.said);
}

// What is wrong with a file; "" where it holds `content` and is sound.
std::string wrongWith(const fs::path& file, const std::string& content) {
    std::string faults;
    const std::string held = contentOf(file, faults);
    if (faults.empty() && held != content) faults = "it holds other rows";
    return faults.empty() ? "" : file.filename().string() + ": " + faults;
}

std::string contentOfSound(const fs::path& file) {
    std::string faults;
    const std::string content = contentOf(file, faults);
    if (!faults.empty()) throw std::runtime_error(faults);
    return content;
}

void copyFiles(const Drive& from, const Drive& to) {
    fs::copy(from.path(), to.path(), fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

// One program that is cut off: where it begins, how it is called, and what must hold wherever it was.
class Scene {
public:
    virtual ~Scene() = default;
    [[nodiscard]] virtual const char* program() const = 0;
    void prepare(const Drive& drive) const { copyFiles(shop_, drive); }
    [[nodiscard]] virtual Program::Words words(const Drive& drive) const = 0;
    [[nodiscard]] virtual Program::Words input() const { return {}; }
    [[nodiscard]] virtual std::string wrongBehind(const Drive& drive, const Outcome& outcome) const = 0;
    // Behind the next run, which nothing disturbs.
    [[nodiscard]] virtual std::string wrongBehindNext(const Drive& drive) const = 0;

protected:
    // The books of a killed till: what it wrote last stands in the journal alone.
    void killATill() {
        copyShop(shop_);
        const pid_t posting = inChild([&]() -> int {
            Till till(shop_);
            till.play(openingLines() + post(10).lines);
            _exit(0); // nothing is closed
        });
        if (exitOf(posting) != 0) throw std::runtime_error("the till did not post");
        const Drive copy;
        copyFiles(shop_, copy);
        content_ = contentOfSound(copy.books());
    }

    Drive shop_; // as the program finds it
    std::string content_;
};

class Making : public Scene {
public:
    Making() {
        const Drive drive;
        require(runProgram(program(), words(drive)));
        content_ = contentOfSound(drive.books());
        templates_ = filesBelow(templatesOf(drive));
    }
    [[nodiscard]] const char* program() const override { return "vorel-hazirla"; }
    [[nodiscard]] Program::Words words(const Drive& drive) const override {
        return {"--kok", drive.path(), "--ornek", "--musteri", "3", "--satis", "3", "--bugun", "22/11/2026"};
    }
    [[nodiscard]] std::string wrongBehind(const Drive& drive, const Outcome& outcome) const override {
        if (fs::exists(drive.books())) return wrongWith(drive.books(), content_);
        return hasShown(outcome, "Hazırlandı") ? "told as made, and not there" : "";
    }
    [[nodiscard]] std::string wrongBehindNext(const Drive& drive) const override {
        Program::Words again = words(drive);
        again.emplace_back("--uzerine-yaz");
        require(runProgram(program(), again));
        if (filesBelow(templatesOf(drive)) != templates_) return "a half-written template stayed";
        const auto beside = std::distance(fs::directory_iterator(drive.books().parent_path()), {});
        if (beside != 2) return "something was left beside the books";
        return wrongWith(drive.books(), content_);
    }

private:
    static fs::path templatesOf(const Drive& drive) { return drive.books().parent_path() / "Rapor"; }

    Files templates_;
};

fs::path backupsOf(const Drive& drive) {
    return drive.path() / "VELDONA/Yedek";
}

std::vector<std::string> backupsTold(const Drive& drive) {
    const Outcome outcome = runProgram("vorel-yedek", {"--kok", drive.path(), "--liste"});
    std::istringstream lines(outcome.said);
    std::vector<std::string> files;
    for (std::string line; outcome.code == 0 && std::getline(lines, line);)
        files.push_back(line);
    return files;
}

class BackingUp : public Scene {
public:
    BackingUp() { killATill(); }
    [[nodiscard]] const char* program() const override { return "vorel-yedek"; }
    [[nodiscard]] Program::Words words(const Drive& drive) const override { return {"--kok", drive.path()}; }
    [[nodiscard]] std::string wrongBehind(const Drive& drive, const Outcome& outcome) const override {
        const std::vector<std::string> backups = backupsTold(drive);
        if (hasShown(outcome, "Yedeklendi") && backups.empty()) return "told as backed up, and not there";
        for (const std::string& backup : backups) {
            const std::string wrong = wrongWith(backup, content_);
            if (!wrong.empty()) return wrong;
        }
        return wrongWith(drive.books(), content_);
    }
    [[nodiscard]] std::string wrongBehindNext(const Drive& drive) const override {
        for (const std::string& backup : backupsTold(drive)) // its name is that of another second
            fs::rename(backup, backupsOf(drive) / "vorel-2026-01-01_000000.mdb");
        require(runProgram(program(), words(drive)));
        const std::vector<std::string> backups = backupsTold(drive);
        if (backups.empty()) return "the next one is not there";
        const auto files = std::distance(fs::directory_iterator(backupsOf(drive)), {});
        if (static_cast<std::size_t>(files) != backups.size()) return "half a backup stayed";
        return wrongWith(backups.back(), content_);
    }
};

class PuttingBack : public Scene {
public:
    PuttingBack() {
        copyShop(shop_);
        require(runProgram(program(), {"--kok", shop_.path()}));
        const std::vector<std::string> backups = backupsTold(shop_);
        if (backups.size() != 1) throw std::runtime_error("no backup");
        backup_ = fs::path(backups[0]).filename();
        content_ = contentOfSound(backups[0]);
        Till(shop_).play(openingLines() + post(10).lines);
        now_ = contentOfSound(shop_.books());
    }
    [[nodiscard]] const char* program() const override { return "vorel-yedek"; }
    [[nodiscard]] Program::Words words(const Drive& drive) const override {
        return {"--kok", drive.path(), "--geri-yukle", backupsOf(drive) / backup_, "--evet"};
    }
    [[nodiscard]] std::string wrongBehind(const Drive& drive, const Outcome& outcome) const override {
        const std::string backup = wrongWith(backupsOf(drive) / backup_, content_);
        if (!backup.empty()) return backup;
        const std::string restored = wrongWith(drive.books(), content_);
        if (!restored.empty())
            return hasShown(outcome, "yerine kondu") ? restored : wrongWith(drive.books(), now_);
        for (const auto& entry : fs::directory_iterator(drive.books().parent_path()))
            if (entry.path().filename().string().starts_with("degistirilen-"))
                return wrongWith(entry.path(), now_);
        return "the replaced books are gone";
    }
    [[nodiscard]] std::string wrongBehindNext(const Drive& drive) const override {
        for (const auto& entry : fs::directory_iterator(drive.books().parent_path()))
            if (entry.path().filename().string().starts_with("degistirilen-")) fs::remove(entry.path());
        require(runProgram(program(), words(drive)));
        return wrongWith(drive.books(), content_);
    }

private:
    fs::path backup_;
    std::string now_;
};

// The first start of a till on new books, with a posting: it also registers the books and marks its folder.
class FirstStart : public Scene {
public:
    FirstStart() {
        copyShop(shop_);
        content_ = contentOfSound(shop_.books());
        std::ofstream(scriptOf(shop_)) << openingLines() + post(10).lines;
        const Drive drive;
        prepare(drive);
        require(runProgram(program(), words(drive)));
        after_ = contentOfSound(drive.books());
    }
    [[nodiscard]] const char* program() const override { return "vorel-operator"; }
    [[nodiscard]] Program::Words words(const Drive& drive) const override {
        return {"--kok", drive.path(), scriptOf(drive)};
    }
    [[nodiscard]] std::string wrongBehind(const Drive& drive, const Outcome& outcome) const override {
        const std::string wrong = wrongWith(drive.books(), after_);
        if (wrong.empty()) return "";
        return outcome.code == kCutAtEnd ? wrong : wrongWith(drive.books(), content_);
    }
    [[nodiscard]] std::string wrongBehindNext(const Drive& drive) const override {
        fs::copy_file(shop_.books(), drive.books(), fs::copy_options::overwrite_existing);
        require(runProgram(program(), words(drive)));
        return wrongWith(drive.books(), after_);
    }

private:
    static fs::path scriptOf(const Drive& drive) { return drive.path() / "ilk.op"; }

    std::string after_;
};

// The books of a killed till get a password of the shop's own.
class Rekeying : public Scene {
public:
    Rekeying() {
        for (const Secret* each : {&own_, &other_})
            passwords::learn(*each);
        killATill();
    }
    ~Rekeying() override { passwords::forget(); }
    Rekeying(const Rekeying&) = delete;
    Rekeying& operator=(const Rekeying&) = delete;
    [[nodiscard]] const char* program() const override { return "vorel-parola"; }
    [[nodiscard]] Program::Words words(const Drive& drive) const override {
        return {"--kok", drive.path(), "--koy", "--parola", "-"};
    }
    [[nodiscard]] Program::Words input() const override { return {std::string(own_.text())}; }
    [[nodiscard]] std::string wrongBehind(const Drive& drive, const Outcome& outcome) const override {
        const bool isOwn = opensBy(drive.books(), own_);
        if (hasShown(outcome, "yeni parolayla") && !isOwn)
            return "told as done, and the password is the former";
        if (isOwn && !isNotedAsOwn(drive.books())) return "nothing notes that it has a password of its own";
        return wrongWith(drive.books(), content_);
    }
    [[nodiscard]] std::string wrongBehindNext(const Drive& drive) const override {
        Program::Words lines = input(); // the present password, where it is the own one already, and another
        const bool isGiven = opensBy(drive.books(), own_);
        if (isGiven) lines.emplace_back(other_.text());
        require(runProgram(program(), words(drive), {}, lines));
        if (!opensBy(drive.books(), isGiven ? other_ : own_)) return "the next one gave no password";
        for (const auto& entry : fs::directory_iterator(drive.books().parent_path()))
            if (entry.path().filename().string().find(".parola.") != std::string::npos)
                return entry.path().string() + " stayed";
        return wrongWith(drive.books(), content_);
    }

private:
    const Secret own_{"dükkânın parolası"}, other_{"çarşının parolası"};
};

struct AfterToolCut {
    std::string wrong;
    bool isOver; // the program came to its end first
};

AfterToolCut cutAt(const Scene& scene, const ToolCut& cut, bool runsAgain) {
    const Drive drive;
    scene.prepare(drive);
    const Outcome outcome = cutOff(scene.program(), scene.words(drive), drive.path(), cut, scene.input());
    AfterToolCut after{scene.wrongBehind(drive, outcome), outcome.code != kCut};
    try {
        if (after.wrong.empty() && runsAgain) after.wrong = scene.wrongBehindNext(drive);
    } catch (const std::runtime_error& failure) {
        after.wrong = std::string("the next one: ") + failure.what();
    }
    return after;
}

void expectWholeOrNotThere(const Scene& scene, int stepInShort) {
    const int step = effort() > 1 ? 1 : stepInShort;
    int cuts = 0;
    for (int nth = 1;; nth += step, ++cuts) {
        const std::string tails[] = {"names", "lost", std::to_string(nth)};
        const ToolCut cut{nth, tails[cuts % 3], "honest"};
        const AfterToolCut after = cutAt(scene, cut, cuts % 2 == 1 || effort() > 1);
        ASSERT_EQ(after.wrong, "") << scene.program() << ", call " << nth << ", tail " << cut.tail;
        if (after.isOver) break;
    }
    for (const char* tail : {"names", "lost"}) { // what was told of as done outlasts a cut just behind it
        const AfterToolCut after = cutAt(scene, {1'000'000, tail, "honest"}, true);
        ASSERT_TRUE(after.isOver);
        ASSERT_EQ(after.wrong, "") << scene.program() << ", at its end, tail " << tail;
    }
    std::cout << scene.program() << ": " << cuts << " power cuts\n";
    EXPECT_GT(cuts, 5);
    // What proves that the cuts above would find a file that is not on the disk.
    EXPECT_NE(cutAt(scene, {1'000'000, "names", "lies"}, false).wrong, "") << "survived without any sync";
}

TEST(Tools, BooksBeingMadeAreWholeOrNotThere) {
    expectWholeOrNotThere(Making(), 41);
}

TEST(Tools, AFirstStartIsStartedAgain) {
    expectWholeOrNotThere(FirstStart(), 5);
}

TEST(Tools, ABackupIsSoundOrNoBackup) {
    expectWholeOrNotThere(BackingUp(), 9);
}

TEST(Tools, AnotherPasswordIsGivenWholeOrNotAtAll) {
    expectWholeOrNotThere(Rekeying(), 13);
}

TEST(Tools, ABackupIsPutBackOrTheBooksStay) {
    expectWholeOrNotThere(PuttingBack(), 13);
}

} // namespace
} // namespace veldona::faults
