#include "apps/sunucu/options.h"

#include "apps/tool/optionreader.h"

namespace veldona::sunucu {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    bool toServer = false, toFile = false;
    OptionReader(usage())
        .flag("--kur", toServer)
        .flag("--geri", toFile)
        .value("--kok", options.root)
        .value("--adres", options.address)
        .value("--sahip", [&options](const std::string& role) { options.owner = role; })
        .read(arguments);
    if (toServer && toFile) throw UsageError("--kur ile --geri birlikte verilmez.");
    options.task = toServer ? Task::ToServer : toFile ? Task::ToFile : Task::Tell;
    if (options.task == Task::ToServer && !options.address)
        throw UsageError(
            "--kur sunucunun adresini de ister, örneğin: --adres \"host=kasa.dukkan dbname=veldona "
            "user=kasa1\"");
    if (options.task != Task::ToServer && options.address)
        throw UsageError("--adres yalnızca --kur ile birlikte verilir.");
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
