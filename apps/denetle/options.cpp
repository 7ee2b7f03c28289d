#include "apps/denetle/options.h"

#include <string_view>

namespace veldona::denetle {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string option = arguments[i];
        if (option == "--csv") {
            options.csv = true;
        } else if (option == "--kok" || option == "--dosya") {
            if (++i == arguments.size() || std::string_view(arguments[i]).empty())
                throw Refusal(option + " bir değer ister.");
            (option == "--kok" ? options.root : options.file) = arguments[i];
        } else {
            throw Refusal("Bilinmeyen seçenek: " + option + "\n" + usage());
        }
    }
    if (options.root && options.file) throw Refusal("--kok ile --dosya birlikte verilmez.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-denetle [seçenekler]\n"
           "Defterdeki kayıtların birbirini tutup tutmadığına bakar; deftere hiçbir şey yazmaz.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --dosya DOSYA       başka bir yerdeki defter, örneğin bir yedek\n"
           "  --csv               bulguları hesap tablosu için yazar\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "Sonuç: 0 defter tutuyor, 1 bulgu var, 2 bakılamadı.\n";
}

} // namespace veldona::denetle
