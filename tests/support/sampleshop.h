// The books of a small sample shop, in a folder of their own.
#pragma once

#include <memory>
#include <string>

#include "apps/hazirla/delivered.h"
#include "apps/hazirla/writeshop.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/support/files.h"

namespace veldona::test {

void deliverShop(const std::string& target, const hazirla::ShopPlan& plan,
                 hazirla::Existing existing = hazirla::Existing::Keep);
[[nodiscard]] std::unique_ptr<store::Engine> openBooks(const std::string& file);

class SampleShop : public TemporaryFolder {
public:
    explicit SampleShop(int customers = 40, int sales = 120) {
        deliverShop(books(), {customers, sales, 3, 1, DateTime::of(2026, 11, 22)});
    }
    [[nodiscard]] std::string books() const { return *this / "vorel.mdb"; }
};

} // namespace veldona::test
