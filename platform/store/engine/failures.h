// The sentences for what goes wrong on any engine in the same manner.
#pragma once

#include "platform/store/dialect/storeerror.h"

namespace veldona::store {

[[nodiscard]] inline StoreError lockedBooks() {
    return {StoreError::Kind::Locked,
            "Veritabanı başka bir bilgisayar tarafından kullanılıyor ve bekleme süresi içinde serbest "
            "kalmadı. Kayıt yapılmadı. Biraz sonra yeniden deneyin."};
}

[[nodiscard]] inline StoreError brokenConstraint() {
    return {StoreError::Kind::Constraint,
            "Kayıt yazılmadı: değer tabloda zaten var ya da boş bırakılamayan bir alan boş."};
}

[[nodiscard]] inline StoreError unfitValue() {
    return {StoreError::Kind::TypeMismatch, "Kayıt yazılmadı: değer, alanın türüne uymuyor."};
}

[[nodiscard]] inline StoreError tooLong() {
    return {StoreError::Kind::Other, "Değer ya da deyim, alınabilenden uzun. Kısaltıp yeniden deneyin."};
}

// Of the disk, the network or another workstation, and not of the statement.
[[nodiscard]] inline bool isOfTheDisk(StoreError::Kind kind) {
    using Kind = StoreError::Kind;
    return kind == Kind::Damaged || kind == Kind::WrongPassword || kind == Kind::Locked ||
           kind == Kind::DiskFull || kind == Kind::InputOutput || kind == Kind::ReadOnly;
}

} // namespace veldona::store
