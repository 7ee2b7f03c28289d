#include "tests/support/sampleshop.h"
#include "core/delivered.h"

namespace veldona::test {

void deliverShop(const std::string& target, const hazirla::ShopPlan& plan, hazirla::Existing existing) {
    hazirla::deliver(target, existing,
                     [&](const std::string& file) { hazirla::writeShop(file, hazirla::makeShop(plan)); });
}

std::unique_ptr<store::Engine> openBooks(const std::string& file) {
    return store::openSqlcipher(file, kDeliveredPassword, std::chrono::seconds(1));
}

} // namespace veldona::test
