#include "tests/faults/damagedfiles.h"

#include "core/delivered.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/faults/day.h"

namespace veldona::faults {

std::string plainFile() {
    std::string bytes = std::string("SQLite format 3") + '\0';
    return bytes + std::string(2 * kPage - bytes.size(), '\0');
}

std::string flipped(std::string bytes, std::size_t from) {
    for (std::size_t at = from; at < bytes.size(); at += kPage)
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
    return bytes;
}

std::string booksWith(const std::vector<std::string>& statements) {
    const Drive drive;
    copyShop(drive);
    {
        const auto engine =
            store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(1));
        for (const std::string& statement : statements)
            engine->execute(statement);
    }
    return bytesOf(drive.books());
}

bool isHelpful(const std::string& text) {
    const auto has = [&](const char* words) { return text.find(words) != text.npos; };
    return (has("Veritabanı")) &&
           (has("bozuk") || has("bu programın veritabanı değil") || has("bu programın koymadığı")) &&
           (has("denetleyin") || has("yedeği geri yükleyin"));
}

void addCustomers(const Drive& drive) {
    const auto engine =
        store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(1));
    engine->begin();
    engine->execute("WITH RECURSIVE N(I) AS (SELECT 100 UNION ALL SELECT I + 1 FROM N WHERE I < 5100) "
                    "INSERT INTO MUSTKAYIT (HSTNO, AD, SOYAD) SELECT CAST(I AS TEXT), 'Ayşe Fatma Gül', "
                    "'Yılmazoğulları' FROM N");
    engine->commit();
}

} // namespace veldona::faults
