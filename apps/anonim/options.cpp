#include "apps/anonim/options.h"

#include <string_view>

#include "backup/refusal.h"

namespace veldona::anonim {

using backup::Refusal;

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string option = arguments[i];
        if (option == "--kok") {
            if (++i == arguments.size() || std::string_view(arguments[i]).empty())
                throw Refusal("--kok bir klasör ister.");
            options.root = arguments[i];
        } else if (option.empty() || option.starts_with('-') || !options.target.empty()) {
            throw Refusal("Bilinmeyen seçenek: " + option + "\n" + usage());
        } else {
            options.target = option;
        }
    }
    if (options.target.empty()) throw Refusal(std::string("Kopyanın adı verilmedi.\n") + usage());
    return options;
}

const char* usage() {
    return "Kullanım: vorel-anonim [seçenekler] KOPYA\n"
           "Defterin, hata bildirimine eklenecek adsız bir kopyasını yazar: adlar, adresler, telefonlar ve\n"
           "bütün metinler değişir; hesap ve ürün numaraları, tutarlar, sayılar ve tarihler kalır, doğum\n"
           "tarihinin yalnız yılı kalır. Defterin kendisine dokunulmaz.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::anonim
