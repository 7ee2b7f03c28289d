// vorel-hazirla: makes the database that the program opens, empty as delivered or filled with a sample shop.
#include <exception>
#include <iostream>
#include <span>
#include <string>

#include "apps/hazirla/delivered.h"
#include "apps/hazirla/options.h"
#include "apps/hazirla/writeshop.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/ownfiles.h"
#include "platform/desktop/paths.h"
#include "platform/store/dialect/storeerror.h"

namespace {

using namespace veldona;
using namespace veldona::hazirla;

std::string sizeOf(const Shop& shop) {
    std::size_t installments = 0;
    for (const Sale& sale : shop.sales)
        installments += sale.schedule.size();
    return std::to_string(shop.customers.size()) + " müşteri, " + std::to_string(shop.sales.size()) +
           " satış, " + std::to_string(installments) + " taksit, " + std::to_string(shop.payments.size()) +
           " ödeme";
}

void prepare(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string target = paths.toNative(kDatabasePath);
    std::string content = "boş defter";
    deliver(target, options.overwrite ? Existing::Replace : Existing::Keep, [&](const std::string& file) {
        if (!options.sample) return;
        const Shop shop = makeShop(options.plan);
        writeShop(file, shop);
        content = sizeOf(shop);
    });
    sablonlariKur(paths);
    std::cout << "Hazırlandı: " << target << " (" << content << ")\n";
}

} // namespace

int main(int count, char** arguments) {
    keepToOwner();
    try {
        const std::span<const char* const> given(arguments, static_cast<std::size_t>(count));
        const Options options = readOptions(given.subspan(1), SystemClock().today());
        if (options.help) {
            std::cout << usage();
            return 0;
        }
        prepare(options);
        return 0;
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
