#include "apps/denetle/options.h"

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::denetle {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    OptionReader reader(usage());
    parola::addPasswordOption(reader, "--parola", options.passwordFromInput);
    reader.value("--kok", options.root)
        .value("--dosya", options.file)
        .flag("--csv", options.csv)
        .read(arguments);
    if (options.root && options.file) throw UsageError("--kok ile --dosya birlikte verilmez.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-denetle [seçenekler]\n"
           "Defterdeki kayıtların birbirini tutup tutmadığına bakar; deftere hiçbir şey yazmaz.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --dosya DOSYA       başka bir yerdeki defter, örneğin bir yedek\n"
           "  --parola -          defterin kendi parolasını girişin ilk satırından okur\n"
           "  --csv               bulguları hesap tablosu için yazar\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "Sonuç: 0 defter tutuyor, 1 bulgu var, 2 bakılamadı.\n";
}

} // namespace veldona::denetle
