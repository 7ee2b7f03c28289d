#include "platform/store/engine/postgres/serverfailure.h"

#include "platform/store/engine/failures.h"

namespace veldona::store {

using Kind = StoreError::Kind;

StoreError storeErrorOf(const ServerRefusal& refusal) {
    const std::string& code = refusal.code;
    const std::string family = code.substr(0, 2);
    if (code == "VD001") return {Kind::TypeMismatch, refusal.message};
    if (code == "22003") return {Kind::TypeMismatch, "Taşma"};
    if (code == "55P03" || code == "57014" || code == "40P01" || code == "40001") return lockedBooks();
    if (code == "53100")
        return {Kind::DiskFull, "Sunucunun diskinde yer kalmadı, kayıt yazılmadı. Yer açıp yeniden deneyin."};
    if (code == "53200" || code == "54000")
        return {Kind::Other, "Sunucunun belleği yetmedi, işlem yapılmadı. Biraz sonra yeniden deneyin."};
    if (code == "58030" || family == "58")
        return {Kind::InputOutput, "Sunucu diskini okuyamadı ya da yazamadı. Sunucunun diskini denetleyin."};
    if (family == "XX")
        return {Kind::Damaged,
                "Sunucudaki veritabanının bir bölümü bozuk, okunamadı. Son yedeği geri yükleyin."};
    if (code == "42501" || code == "25006")
        return {
            Kind::ReadOnly,
            "Bu kullanıcının veritabanına yazma izni yok, kayıt yazılmadı. Sunucudaki iznini denetleyin."};
    if (family == "23") return brokenConstraint();
    if (family == "22" || code == "42804" || code == "42846") return unfitValue();
    if (family == "54") return tooLong();
    return {Kind::Other, "Deyim çalıştırılamadı (" + code + ")."};
}

StoreError connectionLost() {
    return {Kind::InputOutput,
            "Sunucuyla bağlantı koptu; yapılmakta olan işin hiçbir bölümü kaydedilmedi. Sunucuyu ve ağ "
            "bağlantısını denetleyip işi yeniden yapın."};
}

} // namespace veldona::store
