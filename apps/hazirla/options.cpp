#include "apps/hazirla/options.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

#include "apps/hazirla/delivered.h"

namespace veldona::hazirla {
namespace {

template <class T> T readNumber(std::string_view option, std::string_view text, T lowest, T highest) {
    T number{};
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, number);
    if (failure == std::errc() && stop == end && number >= lowest && number <= highest) return number;
    throw Refusal(std::string(option) + " için " + std::to_string(lowest) + " ile " +
                  std::to_string(highest) + " arasında bir sayı gerekir: " + std::string(text));
}

DateTime readDay(std::string_view option, std::string_view text) {
    const bool shaped = text.size() == 10 && text[2] == '/' && text[5] == '/';
    if (!shaped) throw Refusal(std::string(option) + " GG/AA/YYYY biçiminde olmalı: " + std::string(text));
    const int day = readNumber(option, text.substr(0, 2), 1, 31);
    const int month = readNumber(option, text.substr(3, 2), 1, 12);
    const int year = readNumber(option, text.substr(6, 4), 1950, 2200);
    if (!DateTime::isDay(year, month, day))
        throw Refusal(std::string(option) + " takvimde olmayan bir gün: " + std::string(text));
    return DateTime::of(year, month, day);
}

class Reader {
public:
    Reader(std::span<const char* const> arguments, DateTime today) : left_(arguments) {
        options_.plan.today = today;
    }

    Options read() {
        while (!left_.empty()) {
            const std::string_view option = take();
            if (!readSwitch(option)) readValue(option);
        }
        if (!shopOption_.empty() && !options_.sample)
            throw Refusal(shopOption_ + " yalnızca --ornek ile birlikte verilir.");
        return options_;
    }

private:
    std::string_view take() {
        const std::string_view first = left_.front();
        left_ = left_.subspan(1);
        return first;
    }
    bool readSwitch(std::string_view option) {
        bool* const flag = option == "--ornek"         ? &options_.sample
                           : option == "--uzerine-yaz" ? &options_.overwrite
                                                       : nullptr;
        if (flag != nullptr) *flag = true;
        return flag != nullptr;
    }
    void readValue(std::string_view option) {
        constexpr std::string_view known[] = {"--kok", "--musteri", "--satis", "--tohum", "--yil", "--bugun"};
        if (std::find(std::begin(known), std::end(known), option) == std::end(known))
            throw Refusal("Bilinmeyen seçenek: " + std::string(option) + "\n" + usage());
        if (left_.empty()) throw Refusal(std::string(option) + " bir değer ister.");
        const std::string_view value = take();
        if (option == "--kok") {
            if (value.empty()) throw Refusal("--kok bir klasör ister.");
            options_.root = std::string(value);
            return;
        }
        shopOption_ = option;
        ShopPlan& plan = options_.plan;
        if (option == "--musteri") plan.customers = readNumber(option, value, 1, 100'000);
        if (option == "--satis") plan.sales = readNumber(option, value, 0, 500'000);
        if (option == "--tohum") plan.seed = readNumber<std::uint64_t>(option, value, 0, ~std::uint64_t{0});
        if (option == "--yil") plan.years = readNumber(option, value, 1, 40);
        if (option == "--bugun") plan.today = readDay(option, value);
    }

    std::span<const char* const> left_;
    Options options_;
    std::string shopOption_; // the last one seen that only a sample shop understands
};

} // namespace

Options readOptions(std::span<const char* const> arguments, DateTime today) {
    return Reader(arguments, today).read();
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
