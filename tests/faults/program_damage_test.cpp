// Damaged books before the program as a shop starts it, with its windows: the box says what may be wrong and
// what to do, the process ends with a code of its own, and the file is left as it is.
#include <algorithm>
#include <fstream>

#include <gtest/gtest.h>

#include "platform/store/engine/createdatabase.h"
#include "tests/faults/damagedfiles.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

const Program::Environment kOffscreen = {{"QT_QPA_PLATFORM", "offscreen"},
                                         {"QT_QPA_GENERIC_PLUGINS", "onlooker"},
                                         {"QT_PLUGIN_PATH", VELDONA_PLUGINS}};

Program::Words wordsFor(const Drive& drive) {
    return {"--kok", drive.path()};
}

// A start that fails: with one helpful box, a code, and the file untouched.
void expectRefused(const Drive& drive) {
    const std::string before = bytesOf(drive.books());
    const Outcome outcome = runProgram("veldona", wordsFor(drive), kOffscreen);
    EXPECT_EQ(outcome.code, 1) << outcome.said;
    EXPECT_TRUE(isHelpful(outcome.said)) << outcome.said;
    EXPECT_EQ(outcome.said.find("box: "), outcome.said.rfind("box: ")) << outcome.said;
    EXPECT_EQ(outcome.said.find("window: frm"), outcome.said.npos) << outcome.said;
    EXPECT_EQ(bytesOf(drive.books()), before) << "the file was touched";
    EXPECT_FALSE(fs::exists(drive.books().string() + "-wal"));
}

TEST(DamageOfTheProgram, AStartFailsInWordsAndWithACode) {
    const Drive shop;
    copyShop(shop);
    const std::string ours = bytesOf(shop.books());
    const std::pair<const char*, std::string> cases[] = {
        {"empty", ""},
        {"plain", plainFile()},
        {"cut inside the first page", ours.substr(0, 1000)},
        {"cut behind the first page", ours.substr(0, kPage)},
        {"a view of a stranger's", booksWith({"CREATE VIEW V AS SELECT 1"})},
        {"the first page flipped", flipped(ours.substr(0, kPage), 2000) + ours.substr(kPage)}};
    for (const auto& [what, bytes] : cases) {
        SCOPED_TRACE(what);
        const Drive drive;
        writeBytes(drive.books(), bytes);
        expectRefused(drive);
    }
    SCOPED_TRACE("another password");
    const Drive drive;
    store::createDatabase(drive.books().string(), "başka parola", {}, {});
    expectRefused(drive);
    const Drive folder;
    fs::create_directory(folder.books());
    const Outcome outcome = runProgram("veldona", wordsFor(folder), kOffscreen);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(isHelpful(outcome.said)) << outcome.said;
}

TEST(DamageOfTheProgram, ALaterPageIsToldInTheMiddleOfWork) {
    const Drive drive;
    copyShop(drive);
    addCustomers(drive);
    const std::string ours = bytesOf(drive.books());
    Program program("veldona", wordsFor(drive), kOffscreen);
    program.awaitWords("window: frmMainVeldona");
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    const std::string damaged = ours.substr(0, half) + flipped(ours.substr(half), 1000);
    std::fstream(drive.books(), std::ios::binary | std::ios::in | std::ios::out) << damaged;
    std::string said;
    for (int customer = 150; customer < 5100 && !isHelpful(said); customer += 200) {
        program.write("type Text1 " + std::to_string(customer));
        said += program.awaitWords("typed");
    }
    EXPECT_TRUE(isHelpful(said)) << said;
    program.write("type Text1 7"); // the screen goes on
    program.awaitWords("typed");
    program.write("quit");
    EXPECT_EQ(program.finish().code, 0);
    EXPECT_EQ(bytesOf(drive.books()).substr(kPage), damaged.substr(kPage)) << "the file was touched";
}

} // namespace
} // namespace veldona::faults
