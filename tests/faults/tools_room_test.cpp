// The programs that make a file of books, on a disk with little room: from none to three times the books.
// What they call done is whole in its one file, what they can't do is told of and changes nothing.
#include <algorithm>
#include <iostream>
#include <iterator>

#include <gtest/gtest.h>

#include "core/bookpasswords.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"
#include "tests/faults/smalldisk.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

fs::path booksBelow(const fs::path& root) {
    return root / "VELDONA/Veldona_Taksit/vorel.mdb";
}

fs::path onlyFileIn(const fs::path& folder, const std::string& prefix) {
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().filename().string().starts_with(prefix)) return entry.path();
    return folder / (prefix + "… is not there");
}

// What the file holds when it is carried away by itself; `faults` where it is not sound.
std::string contentAlone(const fs::path& file, std::string& faults) {
    const Drive elsewhere;
    std::error_code missing;
    if (!fs::copy_file(file, elsewhere.path() / "tek.mdb", missing)) faults = file.string() + " is not there";
    return faults.empty() ? contentOf(elsewhere.path() / "tek.mdb", faults) : "";
}

// Without the layouts that are put in place beside new books, and the line about the last backup.
Files booksAndBackups(const fs::path& disk) {
    Files files = filesBelow(disk);
    std::erase_if(files, [](const auto& file) {
        return file.first.find("/Rapor/") != file.first.npos || file.first.ends_with("son-yedek.txt");
    });
    return files;
}

const std::string kOwnWords = "dükkânın parolası";
const Secret kOwn(kOwnWords);

struct Work {
    const char* name;
    std::string program;
    Program::Words words; // "%": the root
    std::function<fs::path(const fs::path& root)> result;
    int newFiles;
    Program::Words input = {};
    bool isEachAnother = false; // no two results hold the same
};

Outcome run(const Work& work, const fs::path& root) {
    Program::Words words = work.words;
    for (std::string& word : words)
        if (word.starts_with('%')) word.replace(0, 1, root.string());
    return runProgram(work.program, words, {}, work.input);
}

void PrintTo(const Work& work, std::ostream* out) {
    *out << work.name;
}

class ToolsOnASmallDisk : public ::testing::TestWithParam<Work> {
protected:
    // Books, and beside them a backup that holds one payment less.
    ToolsOnASmallDisk() {
        copyShop(shop);
        require(runProgram("vorel-yedek", {"--kok", shop.path(), "--klasor", shop.path() / "Eski"}));
        fs::rename(onlyFileIn(shop.path() / "Eski", "vorel-"), shop.path() / "yedek.mdb");
        Till(shop).play(openingLines() + post(10).lines);
        if (GetParam().program == "vorel-aktar") fs::remove(shop.books());
        pages = fs::file_size(shop.path() / "yedek.mdb") / kDiskPage;
        const Drive roomy;
        fs::copy(shop.path(), roomy.path(), fs::copy_options::recursive);
        passwords::learn(kOwn);
        require(run(GetParam(), roomy.path()));
        std::string faults;
        expected = contentAlone(GetParam().result(roomy.path()), faults);
        if (!faults.empty()) throw std::runtime_error(faults);
    }
    static void require(const Outcome& outcome) {
        if (outcome.code != 0) throw std::runtime_error(outcome.said);
    }

    [[nodiscard]] std::string wrongWithRoomFor(std::size_t pagesLeft, DiskKind kind, const fs::path& disk) {
        const Work& work = GetParam();
        fs::copy(shop.path(), disk, fs::copy_options::recursive);
        const Files before = booksAndBackups(disk);
        Outcome outcome;
        {
            const NoRoom full(kind, disk, pagesLeft);
            outcome = run(work, disk);
        }
        const Files after = booksAndBackups(disk);
        std::string wrong;
        if (outcome.code == 0) {
            ++done;
            const std::string content = contentAlone(work.result(disk), wrong);
            if (wrong.empty() && !work.isEachAnother && content != expected) wrong = "it holds other rows";
            if (after.size() != before.size() + static_cast<std::size_t>(work.newFiles))
                wrong += "; other files are there than should be";
        } else if (after != before) {
            wrong = "it failed and did not leave everything as it was: " + outcome.said;
            for (const auto& [name, bytes] : after)
                if (!before.contains(name) || before.at(name) != bytes) wrong += name + "; ";
        } else if (!tellsOfRoom(outcome.said)) {
            wrong = "no clear word: " + outcome.said;
        }
        for (const auto& entry : fs::directory_iterator(disk))
            fs::remove_all(entry.path());
        return wrong;
    }
    [[nodiscard]] std::string walk(DiskKind kind, const fs::path& disk) {
        std::vector<std::size_t> sizes{0,        pages / 2, pages, pages + 4, pages * 3 / 2, pages * 2 - 2,
                                       pages * 3};
        if (effort() > 1) {
            sizes.clear();
            for (std::size_t size = 0; size <= pages * 3; ++size)
                sizes.push_back(size);
        }
        for (const std::size_t size : sizes) {
            done = 0;
            const std::string wrong = wrongWithRoomFor(size, kind, disk);
            if (!wrong.empty()) return "room for " + std::to_string(size) + " pages: " + wrong;
            if (size == 0 && done > 0) return "it was done without any room";
        }
        return done > 0 ? "" : "not done with three times the room";
    }

    Drive shop;
    std::string expected;
    std::size_t pages = 0;
    int done = 0;
};

TEST_P(ToolsOnASmallDisk, SayDoneOfWholeFilesAlone) {
    const Drive disk;
    for (const DiskKind kind : {DiskKind::Own, DiskKind::LimitedFiles}) {
        const auto wrong = onDisk(kind, disk.path(), [&] { return walk(kind, disk.path()); });
        if (!wrong) {
            std::cout << "SKIPPED: no file system of its own is to be had here; limited files do instead\n";
            continue;
        }
        EXPECT_EQ(*wrong, "") << (kind == DiskKind::Own ? "on a small disk" : "with limited files");
        if (effort() == 1) return;
    }
}

std::vector<Work> works() {
    const auto kept = [](const fs::path& root) { return booksBelow(root); };
    const auto backup = [](const fs::path& root) { return onlyFileIn(root / "VELDONA/Yedek", "vorel-"); };
    const auto copy = [](const fs::path& root) { return root / "adsiz.mdb"; };
    return {{"Backup", "vorel-yedek", {"--kok", "%"}, backup, 1},
            {"Restore", "vorel-yedek", {"--kok", "%", "--geri-yukle", "%/yedek.mdb", "--evet"}, kept, 1},
            {"Nameless", "vorel-anonim", {"--kok", "%", "%/adsiz.mdb"}, copy, 1, {}, true},
            {"Password",
             "vorel-parola",
             {"--kok", "%", "--koy", "--parola", "-"},
             kept,
             1,
             {kOwnWords}}, // the note
            {"Sample",
             "vorel-hazirla",
             {"--kok", "%", "--uzerine-yaz", "--ornek", "--musteri", "3", "--satis", "3", "--bugun",
              "22/11/2026"},
             kept,
             0},
            {"MovingIn", "vorel-aktar", {"--kok", "%", VELDONA_VERI "/dukkan-jet4.mdb"}, kept, 1}};
}

INSTANTIATE_TEST_SUITE_P(Room, ToolsOnASmallDisk, ::testing::ValuesIn(works()),
                         [](const auto& work) { return std::string(work.param.name); });

} // namespace
} // namespace veldona::faults
