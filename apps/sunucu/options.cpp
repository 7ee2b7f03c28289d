#include "apps/sunucu/options.h"

#include "backup/refusal.h"

namespace veldona::sunucu {

using backup::Refusal;

namespace {

bool readTask(const std::string& option, Options& options) {
    if (option != "--kur" && option != "--geri") return false;
    if (options.task != Task::Tell) throw Refusal("--kur ile --geri birlikte verilmez.");
    options.task = option == "--kur" ? Task::ToServer : Task::ToFile;
    return true;
}

void readValue(const std::string& option, const std::string& value, Options& options) {
    if (value.empty()) throw Refusal(option + " bir değer ister.");
    if (option == "--kok") options.root = value;
    if (option == "--adres") options.address = value;
    if (option == "--sahip") options.owner = value;
}

} // namespace

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string option = arguments[i];
        if (readTask(option, options)) continue;
        if (option != "--kok" && option != "--adres" && option != "--sahip")
            throw Refusal("Bilinmeyen seçenek: " + option + "\n" + usage());
        if (++i == arguments.size()) throw Refusal(option + " bir değer ister.");
        readValue(option, arguments[i], options);
    }
    if (options.task == Task::ToServer && !options.address)
        throw Refusal("--kur sunucunun adresini de ister, örneğin: --adres \"host=kasa.dukkan dbname=veldona "
                      "user=kasa1\"");
    if (options.task != Task::ToServer && options.address)
        throw Refusal("--adres yalnızca --kur ile birlikte verilir.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-sunucu [seçenekler]\n"
           "Defteri birkaç kasanın birlikte kullanacağı bir PostgreSQL sunucusuna taşır ve geri getirir.\n"
           "Seçeneksiz: defterin nerede olduğunu söyler.\n"
           "\n"
           "  --kur               defterin dosyasını sunucuya taşır\n"
           "  --adres METİN       kasanın adresi, libpq'nun sözleriyle, parolasız:\n"
           "                      \"host=kasa.dukkan dbname=veldona user=kasa1\"\n"
           "  --geri              sunucudaki defteri dosyaya geri getirir\n"
           "  --sahip ROL         tabloların sahibi olan rol (veldona_sahip)\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "İki yön de bütün satırları ve her hesabın bakiyesini karşılaştırmadan bitmez. Kalan defter "
           "silinmez,\n"
           "başka bir adla saklanır. Yarıda kesilen iş, aynı komutla sürdürülür.\n";
}

} // namespace veldona::sunucu
