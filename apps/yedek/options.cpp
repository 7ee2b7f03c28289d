#include "apps/yedek/options.h"

#include <string_view>

#include "backup/refusal.h"

namespace veldona::yedek {

using backup::Refusal;

namespace {

bool readSwitch(const std::string& option, Options& options) {
    bool* const flag = option == "--evet"    ? &options.confirmed
                       : option == "--liste" ? &options.list
                                             : nullptr;
    if (flag != nullptr) *flag = true;
    return flag != nullptr;
}

std::optional<std::string>* valueOf(const std::string& option, Options& options) {
    if (option == "--kok") return &options.root;
    if (option == "--klasor") return &options.folder;
    if (option == "--geri-yukle") return &options.restore;
    if (option == "--sahip") return &options.owner;
    return nullptr;
}

} // namespace

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string option = arguments[i];
        if (readSwitch(option, options)) continue;
        std::optional<std::string>* const value = valueOf(option, options);
        if (value == nullptr) throw Refusal("Bilinmeyen seçenek: " + option + "\n" + usage());
        if (++i == arguments.size() || std::string_view(arguments[i]).empty())
            throw Refusal(option + " bir değer ister.");
        *value = arguments[i];
    }
    if (options.confirmed && !options.restore)
        throw Refusal("--evet yalnızca --geri-yukle ile birlikte verilir.");
    if (options.owner && !options.restore)
        throw Refusal("--sahip yalnızca --geri-yukle ile birlikte verilir.");
    if (options.list && options.restore) throw Refusal("--liste ile --geri-yukle birlikte verilmez.");
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
           "  --sahip ROL         sunucudaki defterin tablolarının sahibi (veldona_sahip)\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::yedek
