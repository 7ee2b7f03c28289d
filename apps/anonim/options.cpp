#include "apps/anonim/options.h"

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::anonim {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    OptionReader reader(usage());
    parola::addPasswordOption(reader, "--parola", options.passwordFromInput);
    reader.value("--kok", options.root)
        .word([&options](const std::string& word) {
            const bool isFirst = options.target.empty();
            if (isFirst) options.target = word;
            return isFirst;
        })
        .read(arguments);
    if (options.target.empty()) throw UsageError(std::string("Kopyanın adı verilmedi.\n") + usage());
    return options;
}

const char* usage() {
    return "Kullanım: vorel-anonim [seçenekler] KOPYA\n"
           "Defterin, hata bildirimine eklenecek adsız bir kopyasını yazar: adlar, adresler, telefonlar ve\n"
           "bütün metinler değişir; hesap ve ürün numaraları, tutarlar, sayılar ve tarihler kalır, doğum\n"
           "tarihinin yalnız yılı kalır. Defterin kendisine dokunulmaz.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --parola -          defterin kendi parolasını girişin ilk satırından okur\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::anonim
