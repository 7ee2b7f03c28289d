#include "apps/yedek/options.h"

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::yedek {

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    OptionReader reader(usage());
    parola::addPasswordOption(reader, "--parola", options.passwordFromInput);
    reader.value("--kok", options.root)
        .value("--klasor", options.folder)
        .value("--geri-yukle", options.restore)
        .value("--sahip", options.owner)
        .flag("--evet", options.confirmed)
        .flag("--liste", options.list)
        .read(arguments);
    if (options.confirmed && !options.restore)
        throw UsageError("--evet yalnızca --geri-yukle ile birlikte verilir.");
    if (options.owner && !options.restore)
        throw UsageError("--sahip yalnızca --geri-yukle ile birlikte verilir.");
    if (options.list && options.restore) throw UsageError("--liste ile --geri-yukle birlikte verilmez.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-yedek [seçenekler]\n"
           "Program açıkken de defterin şifreli bir yedeğini alır ve yedeği denetler. Son 30 günün ve son "
           "12\n"
           "ayın yedekleri saklanır, eskileri silinir.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --klasor KLASÖR     yedeklerin klasörü; verilmezse C: sürücüsünde VELDONA/Yedek\n"
           "  --liste             alınmış yedekleri ve değişen defterleri sıralar\n"
           "  --geri-yukle DOSYA  bu yedek yerine konursa ne kaybolacağını gösterir\n"
           "  --evet              gösterir ve yedeği yerine koyar; değişen defter yanında saklanır\n"
           "  --parola -          defterin kendi parolasını girişin ilk satırından okur\n"
           "  --sahip ROL         sunucudaki defterin tablolarının sahibi (veldona_sahip)\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::yedek
