#include "apps/aktar/options.h"

#include <string_view>

#include "apps/hazirla/delivered.h"

namespace veldona::aktar {
namespace {

using hazirla::Refusal;

void readValue(Options& options, std::string_view option, std::string_view value) {
    if (value.empty()) throw Refusal(std::string(option) + " bir değer ister.");
    if (option == "--kok") {
        options.root = std::string(value);
    } else if (value == "-") {
        options.passwordFromInput = true;
    } else {
        options.password = std::string(value);
    }
}

} // namespace

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view word = arguments[i];
        if (word == "--dene") {
            options.trial = true;
        } else if (word == "--kok" || word == "--parola") {
            readValue(options, word, i + 1 < arguments.size() ? arguments[i + 1] : "");
            ++i;
        } else if (word.starts_with("-")) {
            throw Refusal("Bilinmeyen seçenek: " + std::string(word) + "\n" + usage());
        } else if (!options.source.empty()) {
            throw Refusal("Yalnızca bir dosya aktarılır: " + std::string(word));
        } else {
            options.source = word;
        }
    }
    if (options.source.empty()) throw Refusal(std::string("Aktarılacak dosya verilmedi.\n") + usage());
    return options;
}

const char* usage() {
    return "Kullanım: vorel-aktar DOSYA [seçenekler]\n"
           "Eski bir Jet dosyasını (.mdb) boş bir dükkân defterine aktarır; dolu bir deftere dokunmaz.\n"
           "\n"
           "  --dene              yalnızca rapor: satırlar, sığmayanlar, her müşterinin bakiyesi\n"
           "  --parola P          dosyanın parolası; P yerine - denirse ilk satır girişten okunur\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::aktar
