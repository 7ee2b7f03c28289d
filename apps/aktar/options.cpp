#include "apps/aktar/options.h"

#include "apps/tool/optionreader.h"

namespace veldona::aktar {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    OptionReader(usage())
        .flag("--dene", options.trial)
        .value("--kok", options.root)
        .value("--parola",
               [&options](const std::string& value) {
                   // A password that stands here is overwritten later, also where another one counts.
                   if (value == "-")
                       options.passwordFromInput = true;
                   else
                       options.password = value;
               })
        .word([&options](const std::string& word) {
            if (!options.source.empty()) throw UsageError("Yalnızca bir dosya aktarılır: " + word);
            options.source = word;
            return true;
        })
        .read(arguments);
    if (options.source.empty()) throw UsageError(std::string("Aktarılacak dosya verilmedi.\n") + usage());
    return options;
}

const char* usage() {
    return "Kullanım: vorel-aktar DOSYA [seçenekler]\n"
           "Eski bir Jet dosyasını (.mdb) boş bir dükkân defterine aktarır; dolu bir deftere dokunmaz.\n"
           "\n"
           "  --dene              yalnızca rapor: satırlar, sığmayanlar, her müşterinin bakiyesi\n"
           "  --parola P          dosyanın parolası; P yerine - denirse girişin ilk satırından okunur,\n"
           "                      defterin kendi parolası varsa ikinciden\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::aktar
