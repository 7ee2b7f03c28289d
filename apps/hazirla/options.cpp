#include "apps/hazirla/options.h"

#include <charconv>
#include <functional>
#include <string_view>

#include "apps/tool/optionreader.h"

namespace veldona::hazirla {
namespace {

template <class T> T readNumber(std::string_view option, std::string_view text, T lowest, T highest) {
    T number{};
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure == std::errc() && stop == end && number >= lowest && number <= highest) return number;
    throw UsageError(std::string(option) + " için " + std::to_string(lowest) + " ile " +
                     std::to_string(highest) + " arasında bir sayı gerekir: " + std::string(text));
}

DateTime readDay(std::string_view option, std::string_view text) {
    const bool shaped = text.size() == 10 && text[2] == '/' && text[5] == '/';
    if (!shaped) throw UsageError(std::string(option) + " GG/AA/YYYY biçiminde olmalı: " + std::string(text));
    const int day = readNumber(option, text.substr(0, 2), 1, 31);
    const int month = readNumber(option, text.substr(3, 2), 1, 12);
    const int year = readNumber(option, text.substr(6, 4), 1950, 2200);
    if (!DateTime::isDay(year, month, day))
        throw UsageError(std::string(option) + " takvimde olmayan bir gün: " + std::string(text));
    return DateTime::of(year, month, day);
}

} // namespace

Options readOptions(std::span<const char* const> arguments, DateTime today) {
    Options options;
    ShopPlan& plan = options.plan;
    plan.today = today;
    OptionReader reader(usage());
    reader.value("--kok", options.root)
        .flag("--ornek", options.sample)
        .flag("--uzerine-yaz", options.overwrite);
    std::string shopOption; // the last one seen that only a sample shop understands
    const auto ofShop = [&](const std::string& name, const std::function<void(const std::string&)>& take) {
        reader.value(name, [&shopOption, name, take](const std::string& text) {
            shopOption = name;
            take(text);
        });
    };
    ofShop("--musteri", [&](auto& text) { plan.customers = readNumber("--musteri", text, 1, 100'000); });
    ofShop("--satis", [&](auto& text) { plan.sales = readNumber("--satis", text, 0, 500'000); });
    ofShop("--tohum",
           [&](auto& text) { plan.seed = readNumber<std::uint64_t>("--tohum", text, 0, ~std::uint64_t{0}); });
    ofShop("--yil", [&](auto& text) { plan.years = readNumber("--yil", text, 1, 40); });
    ofShop("--bugun", [&](auto& text) { plan.today = readDay("--bugun", text); });
    reader.read(arguments);
    if (!shopOption.empty() && !options.sample)
        throw UsageError(shopOption + " yalnızca --ornek ile birlikte verilir.");
    return options;
}

const char* usage() {
    return "Kullanım: vorel-hazirla [seçenekler]\n"
           "Boş bir dükkân defterini (vorel.mdb) hazırlar; var olan bir dosyanın üzerine yazmaz.\n"
           "\n"
           "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
           "  --uzerine-yaz       var olan defterin yerine yenisini koyar\n"
           "  --ornek             defteri örnek bir dükkânla doldurur\n"
           "  --musteri SAYI      örnek dükkânın müşterileri (300)\n"
           "  --satis SAYI        örnek dükkânın satışları (1500)\n"
           "  --yil SAYI          satışların yayıldığı yıllar (5)\n"
           "  --tohum SAYI        aynı tohum aynı dükkânı verir (1)\n"
           "  --bugun GG/AA/YYYY  örnek dükkânın bugünü; verilmezse bu bilgisayarınki\n"
           "  --yardim, --help    bu sayfa\n"
           "  --surum, --version  programın sürümü\n";
}

} // namespace veldona::hazirla
