#include "apps/gunluk/options.h"

#include <charconv>

#include "apps/parola/asking.h"
#include "apps/tool/optionreader.h"

namespace veldona::gunluk {
namespace {

constexpr int kMostMonths = 240;

int monthsOf(const std::string& text) {
    int months = 0;
    const char* end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, months);
    if (read.ec != std::errc() || read.ptr != end || months < 1 || months > kMostMonths)
        throw UsageError("--incelt bir ay sayısı ister, 1 ile 240 arasında: " + text);
    return months;
}

} // namespace

Options readOptions(std::span<const char* const> arguments) {
    Options options;
    std::optional<std::string> months;
    OptionReader reader(usage());
    parola::addPasswordOption(reader, "--parola", options.passwordFromInput);
    reader.value("--kok", options.root)
        .value("--incelt", months)
        .value("--sahip", options.owner)
        .flag("--evet", options.confirmed)
        .read(arguments);
    if (months) options.months = monthsOf(*months);
    if (options.confirmed && !months) throw UsageError("--evet yalnızca --incelt ile birlikte verilir.");
    if (options.owner && !months) throw UsageError("--sahip yalnızca --incelt ile birlikte verilir.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-gunluk [seçenekler]\n"
           "Defterin günlüğünü, yani kimin neyi değiştirdiğini tutan kayıtları gösterir: kaç tane, ne\n"
           "zamandan beri, zinciri sağlam mı. İstenirse eski kayıtları siler.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --incelt AY         bu kadar aydan eski kayıtlar silinirse ne olacağını gösterir\n"
           "  --evet              gösterir ve siler; silinen kayıtlar geri gelmez\n"
           "  --sahip ROL         sunucudaki defterin tablolarının sahibi (veldona_sahip)\n"
           "  --parola -          defterin kendi parolasını girişin ilk satırından okur\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n"
           "\n"
           "Sonuç: 0 zincir sağlam, 1 değil, 2 bakılamadı.\n";
}

} // namespace veldona::gunluk
