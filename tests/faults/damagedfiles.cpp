#include "tests/faults/damagedfiles.h"

#include "tests/faults/day.h"

namespace veldona::faults {

std::string flipped(std::string bytes, std::size_t from) {
    for (std::size_t at = from; at < bytes.size(); at += kPage)
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
    return bytes;
}

std::vector<std::pair<std::string, std::string>> damagedBooks() {
    const std::string ours = booksWith({}), first = ours.substr(0, kPage), rest = ours.substr(kPage);
    std::string plain = "SQLite format 3"; // of the engine, without a password
    plain.resize(2 * kPage);
    return {{"empty", ""},
            {"plain", plain},
            {"noise", std::string(3 * kPage, 'x')},
            {"cut inside the first page", ours.substr(0, 1000)},
            {"cut behind the first page", first},
            {"the first byte flipped", flipped(first, 0) + rest},
            {"the first page flipped", flipped(first, 2000) + rest}};
}

std::string booksWith(const std::vector<std::string>& statements) {
    const Drive drive;
    copyShop(drive);
    for (const auto engine = drive.engine(); const std::string& statement : statements)
        engine->execute(statement);
    return bytesOf(drive.books());
}

bool isHelpful(const std::string& text) {
    const auto has = [&](const char* words) { return text.find(words) != text.npos; };
    return (has("Veritabanı")) &&
           (has("bozuk") || has("bu programın veritabanı değil") || has("bu programın koymadığı")) &&
           (has("denetleyin") || has("yedeği geri yükleyin"));
}

void addCustomers(const Drive& drive) {
    drive.engine()->execute(
        "WITH RECURSIVE N(I) AS (SELECT 100 UNION ALL SELECT I + 1 FROM N WHERE I < 5100) "
        "INSERT INTO MUSTKAYIT (HSTNO, AD, SOYAD) SELECT CAST(I AS TEXT), 'Ayşe Fatma Gül', "
        "'Yılmazoğulları' FROM N");
}

} // namespace veldona::faults
