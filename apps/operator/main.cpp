#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "apps/operator/folders.h"
#include "apps/operator/pdfwriter.h"
#include "apps/operator/runner.h"
#include "apps/operator/windowsystem.h"
#include "apps/screens.h"
#include "apps/tool/optionreader.h"
#include "apps/tool/toolmain.h"

namespace veldona::console {

namespace {

enum Exit { AllHeld = 0, FellShort = 1, CouldNotRead = 2 };

constexpr Tool kTool = {
    "vorel-operator",
    "usage: vorel-operator [--kok DIR] [--pencere] [--sunucu \"CONNECTION TEXT\"] [FILE ...]\n"
    "FILE: lines for the operator; none, or \"-\": standard input\n"
    "--yardim, --help: this page; --surum, --version: the version\n",
    CouldNotRead};

struct Options {
    std::optional<std::string> drive;
    bool withWindows = false;
    std::optional<store::ServerAddress> server;
    std::vector<std::string> files;
};

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    OptionReader(kTool.usage)
        .flag("--pencere", options.withWindows)
        .value("--kok", options.drive)
        .value("--sunucu", [&options](const std::string& text) { options.server.emplace(text, "--sunucu"); })
        .word([&options](const std::string& word) {
            options.files.push_back(word);
            return true;
        })
        .read(arguments);
    if (options.files.empty()) options.files.emplace_back("-");
    return options;
}

void runFile(const std::string& file, const std::optional<std::string>& drive, Setting setting,
             Tally& tally) {
    const bool fromStandardInput = file == "-";
    std::ifstream opened;
    if (!fromStandardInput) opened.open(file);
    if (!fromStandardInput && !opened) {
        std::cerr << file << ": " << std::strerror(errno) << '\n';
        tally.unreadable = true;
        return;
    }
    const DriveFolder folder(drive);
    Script script(fromStandardInput ? "standard input" : file, fromStandardInput ? std::cin : opened);
    setting.folder = folder.path();
    Runner(script, std::move(setting), tally).run();
}

Tally runAll(const Options& options, const Setting& setting) {
    Tally tally;
    for (std::size_t i = 0; i < options.files.size() && !tally.unreadable; ++i) {
        std::optional<std::string> drive = options.drive;
        if (drive && options.files.size() > 1) *drive += "/" + std::to_string(i + 1);
        runFile(options.files[i], drive, setting, tally);
    }
    return tally;
}

int run(int count, char** arguments, std::span<const char* const> given) {
    const Options options = readOptions(given);
    std::optional<WindowSystem> system;
    OpenWindows windows;
    if (options.withWindows) {
        system.emplace(count, arguments);
        windows = [&](Clock& clock) { return system->open(clock); };
    }
    PdfWriter pdf(count, arguments);
    const auto writePdf = [&pdf](const report::Document& document, const std::string& file) {
        pdf.write(document, file);
    };
    const Tally tally = runAll(options, {{}, registerScreens, windows, writePdf, options.server});
    std::cout << tally.passed << " passed, " << tally.failed << " failed" << std::endl;
    if (tally.unreadable) return CouldNotRead;
    return tally.failed > 0 ? FellShort : AllHeld;
}

} // namespace

} // namespace veldona::console

int main(int count, char** arguments) {
    return veldona::toolMain(
        veldona::console::kTool, count, arguments,
        [&](std::span<const char* const> given) { return veldona::console::run(count, arguments, given); });
}
