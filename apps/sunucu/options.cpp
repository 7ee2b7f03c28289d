#include "apps/sunucu/options.h"

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::sunucu {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    bool toServer = false, toFile = false, renew = false;
    OptionReader reader(usage());
    parola::addPasswordOption(reader, "--parola", options.passwordFromInput);
    reader.flag("--kur", toServer)
        .flag("--geri", toFile)
        .flag("--yenile", renew)
        .value("--kok", options.root)
        .value("--adres", options.address)
        .value("--sahip", [&options](const std::string& role) { options.owner = role; })
        .read(arguments);
    if (toServer + toFile + renew > 1) throw UsageError("--kur, --geri ve --yenile birlikte verilmez.");
    options.task = toServer ? Task::ToServer : toFile ? Task::ToFile : renew ? Task::Renew : Task::Tell;
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
           "  --yenile            programın yeni sürümünün istediklerini sunucudaki deftere ekler\n"
           "  --sahip ROL         tabloların sahibi olan rol (veldona_sahip)\n"
           "  --parola -          defterin kendi parolasını girişin ilk satırından okur\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "Her biri bütün satırları ve her hesabın bakiyesini karşılaştırmadan bitmez. Kalan defter "
           "silinmez,\n"
           "başka bir adla saklanır. Yarıda kesilen iş, aynı komutla sürdürülür.\n";
}

} // namespace veldona::sunucu
