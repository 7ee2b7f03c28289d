// vorel-hazirla: makes the database that the program opens, empty as delivered or filled with a sample shop.
#include <iostream>
#include <span>
#include <string>

#include "apps/hazirla/delivered.h"
#include "apps/hazirla/options.h"
#include "apps/hazirla/writeshop.h"
#include "apps/tool/toolmain.h"
#include "core/delivered.h"
#include "core/reporting.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/openplace.h"

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
    installLayouts(paths);
    std::cout << "Hazırlandı: " << store::shown(store::placeOf(target)) << " (" << content << ")\n";
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-hazirla", usage()}, count, arguments, [](std::span<const char* const> given) {
        prepare(readOptions(given, SystemClock().today()));
        return 0;
    });
}
