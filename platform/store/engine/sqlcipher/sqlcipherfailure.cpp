#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

#include <sqlcipher/sqlite3.h>

#include "platform/store/engine/failures.h"

namespace veldona::store {
namespace {

using Kind = StoreError::Kind;

constexpr std::string_view kOwnFunctionMark = "T:"; // our SQL functions put it before what they have to say

StoreError damaged() {
    return {Kind::Damaged,
            "Veritabanı dosyasının bir bölümü bozuk, okunamadı. Programı kapatın ve son yedeği geri "
            "yükleyin."};
}

} // namespace

StoreError engineFailure(int code, std::string_view engineText) {
    if (code == SQLITE_IOERR_SHMSIZE) code = SQLITE_FULL; // the index beside the file found no room
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return lockedBooks();
    case SQLITE_FULL:
        return {Kind::DiskFull, "Diskte yer kalmadı, kayıt yazılmadı. Yer açıp yeniden deneyin."};
    case SQLITE_IOERR:
    case SQLITE_CANTOPEN:
        return {Kind::InputOutput, "Veritabanı dosyası okunamadı ya da yazılamadı. Diski, ağ bağlantısını ve "
                                   "klasörün izinlerini denetleyin."};
    case SQLITE_CORRUPT:
        return damaged();
    case SQLITE_NOTADB:
        return wrongPassword();
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {Kind::ReadOnly,
                "Veritabanına yazma izni yok, kayıt yazılmadı. Dosyanın ve klasörünün izinlerini "
                "denetleyin."};
    case SQLITE_CONSTRAINT:
        return brokenConstraint();
    case SQLITE_MISMATCH:
        return unfitValue();
    case SQLITE_TOOBIG:
        return tooLong();
    case SQLITE_NOMEM:
        return {Kind::Other, "Bellek yetmedi, işlem yapılmadı. Açık programları kapatıp yeniden deneyin."};
    default:
        break;
    }
    if (engineText.starts_with(kOwnFunctionMark))
        return {Kind::TypeMismatch, std::string(engineText.substr(kOwnFunctionMark.size()))};
    return {Kind::Other, "Deyim çalıştırılamadı (" + std::to_string(code) + ")."};
}

void failEngine(sqlite3* connection) {
    throw engineFailure(sqlite3_extended_errcode(connection), sqlite3_errmsg(connection));
}

StoreError missingFile(const std::string& path) {
    return {Kind::FileMissing, "Veritabanı dosyası bulunamadı: " + path +
                                   ". Taşınmış ya da silinmiş olabilir; yerine koyup yeniden başlatın."};
}

StoreError unreachableFile(const std::string& path) {
    return {Kind::InputOutput,
            "Veritabanı dosyasına ulaşılamadı: " + path + ". Diski, ağ bağlantısını ve izinleri denetleyin."};
}

StoreError readOnlyFile(const std::string& path) {
    return {Kind::ReadOnly, "Veritabanı dosyasına yazma izni yok: " + path +
                                ". Açılmadı, çünkü kayıtlar yazılamazdı. Dosyanın iznini denetleyin."};
}

StoreError fileExists(const std::string& path) {
    return {Kind::Other, "Veritabanı dosyası zaten var: " + path + ". Üzerine yazılmadı."};
}

StoreError notADatabase(const std::string& path, std::string_view why) {
    return {Kind::Damaged, "Veritabanı açılamadı: " + path + " bu programın veritabanı değil (" +
                               std::string(why) + "). Yolu denetleyin ya da son yedeği geri yükleyin."};
}

StoreError foreignJournal(const std::string& path) {
    return {Kind::Damaged,
            "Veritabanı açılamadı: yanında duran " + path +
                "-wal günlüğü bu dosyayla uyuşmuyor; dosya elle değiştirilmiş olabilir. İkisine de "
                "dokunulmadı. Dosya doğruysa günlüğü silmeden başka bir klasöre taşıyıp yeniden başlatın; "
                "değilse bir yedeğe dönün."};
}

StoreError wrongPassword() {
    return {Kind::WrongPassword,
            "Veritabanı açılamadı: parola yanlış ya da dosyanın başı bozuk. Parolayı denetleyin; "
            "doğruysa son yedeği geri yükleyin."};
}

} // namespace veldona::store
