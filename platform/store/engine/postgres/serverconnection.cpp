#include "platform/store/engine/postgres/serverconnection.h"

#include <libpq-fe.h>
#include <locale.h>
#include <poll.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace veldona::store {
namespace {

using Clock = std::chrono::steady_clock;
using Kind = StoreError::Kind;

constexpr std::chrono::milliseconds kAskEvery(50);

// libpq tells of a failed connection by a sentence alone. In this locale the sentence is always the same; the
// operator never sees it.
class PlainMessages {
public:
    PlainMessages() : plain_(newlocale(LC_ALL_MASK, "C", nullptr)), before_(uselocale(plain_)) {}
    ~PlainMessages() {
        uselocale(before_);
        freelocale(plain_);
    }
    PlainMessages(const PlainMessages&) = delete;
    PlainMessages& operator=(const PlainMessages&) = delete;

private:
    locale_t plain_, before_;
};

struct Reason {
    std::string_view sign; // in the sentence: a code of the server's, or words of libpq's
    Kind kind;
    const char* words;
};

constexpr const char* kWrongPassword =
    "Sunucu parolayı kabul etmedi. Parola, parola dosyasında (~/.pgpass) aranır; satırını ve dosyanın yalnız "
    "sahibine açık olduğunu denetleyin.";
constexpr const char* kUnsafe =
    "Sunucuyla güvenli (TLS) bağlantı kurulamadı. Sunucunun sertifikasını ve adresteki sslmode ile "
    "sslrootcert sözlerini denetleyin.";

// The first that fits. A server's own code stands in the sentence behind "FATAL:".
constexpr Reason kReasons[] = {
    {"FATAL:  28P01", Kind::WrongPassword, kWrongPassword},
    {"FATAL:  28", Kind::WrongPassword,
     "Sunucu bu kullanıcıyı bu bilgisayardan kabul etmiyor. Rolün adını, veritabanının adını ve sunucudaki "
     "pg_hba.conf satırını denetleyin."},
    {"no password supplied", Kind::WrongPassword, kWrongPassword},
    {"FATAL:  3D000", Kind::FileMissing,
     "Sunucuda bu adda bir veritabanı yok. Adı denetleyin; defter henüz taşınmadıysa vorel-sunucu --kur "
     "taşır."},
    {"FATAL:  42501", Kind::ReadOnly, "Bu kullanıcının veritabanına girme izni yok."},
    {"FATAL:  53300", Kind::Locked, "Sunucuya bağlanabilecek kadar çok bilgisayar zaten bağlı."},
    {"FATAL:  57P03", Kind::Locked, "Sunucu açılıyor ya da kapanıyor. Biraz sonra yeniden deneyin."},
    {"FATAL:  57P0", Kind::Locked, "Sunucu kapanıyor. Biraz sonra yeniden deneyin."},
    {"could not translate host name", Kind::InputOutput,
     "Sunucunun adı ağda bulunamadı. Adı ve ağ bağlantısını denetleyin."},
    {"Connection refused", Kind::InputOutput,
     "O bilgisayar açık, ama orada çalışan bir PostgreSQL yok ya da kapısı kapalı. Sunucunun çalıştığını, "
     "listen_addresses ayarını ve güvenlik duvarını denetleyin."},
    {"No such file or directory", Kind::InputOutput,
     "Bu bilgisayarda çalışan bir PostgreSQL bulunamadı. Sunucunun çalıştığını denetleyin."},
    {"definition of service", Kind::FileMissing,
     "Bu adda bir hizmet yok. Hizmet dosyasını (~/.pg_service.conf) denetleyin."},
    {"service file", Kind::FileMissing, "Hizmet dosyası okunamadı. ~/.pg_service.conf dosyasını denetleyin."},
    {"certificate", Kind::InputOutput, kUnsafe},
    {"SSL", Kind::InputOutput, kUnsafe},
    {"No route to host", Kind::InputOutput, "O adrese ağdan yol yok. Ağ bağlantısını denetleyin."},
    {"unreachable", Kind::InputOutput, "O adrese ağdan yol yok. Ağ bağlantısını denetleyin."},
    {"timeout expired", Kind::InputOutput,
     "Sunucu yanıt vermedi. Açık olduğunu, ağı ve güvenlik duvarını denetleyin."},
    {"invalid", Kind::Other, "Adresteki bir söz PostgreSQL'in bildiklerinden değil."},
};

StoreError unreachable(const ServerAddress& address, std::string_view sentence) {
    const auto* const found =
        std::find_if(std::begin(kReasons), std::end(kReasons), [&](const Reason& reason) {
            return sentence.find(reason.sign) != std::string_view::npos;
        });
    const bool isKnown = found != std::end(kReasons);
    return {isKnown ? found->kind : Kind::InputOutput,
            "Defterin sunucusuna bağlanılamadı: " + address.shown() + ". " +
                (isKnown ? found->words : "Bağlantı kurulurken koptu. Sunucuyu ve ağı denetleyin.") +
                " Adres burada yazılı: " + address.source()};
}

// The server learns as soon that a till is gone: in the middle of a save it would hold up all others.
const std::string kServerNotices = "-c tcp_keepalives_idle=10 -c tcp_keepalives_interval=5 "
                                   "-c tcp_keepalives_count=3 -c tcp_user_timeout=20000 ";

// A till whose network went away learns of it in seconds and not in the minutes that the system waits.
ServerConnection begin(const ServerAddress& address) {
    std::map<std::string, std::string> keywords = {{"fallback_application_name", "veldona"},
                                                   {"keepalives_idle", "10"},
                                                   {"keepalives_interval", "5"},
                                                   {"keepalives_count", "3"},
                                                   {"tcp_user_timeout", "20000"}};
    for (const auto& [keyword, value] : address.keywords())
        keywords.insert_or_assign(keyword, value);
    keywords["client_encoding"] = "UTF8";
    keywords["options"] = kServerNotices + keywords["options"];
    std::vector<const char*> names, values;
    for (const auto& [keyword, value] : keywords) {
        names.push_back(keyword.c_str());
        values.push_back(value.c_str());
    }
    names.push_back(nullptr);
    values.push_back(nullptr);
    ServerConnection connection(PQconnectStartParams(names.data(), values.data(), 0));
    if (connection == nullptr) throw std::bad_alloc();
    PQsetErrorVerbosity(connection.get(), PQERRORS_SQLSTATE); // a code in place of a sentence
    return connection;
}

bool isReady(const ServerConnection& connection, PostgresPollingStatusType wanted) {
    pollfd socket{PQsocket(connection.get()),
                  static_cast<short>(wanted == PGRES_POLLING_READING ? POLLIN : POLLOUT), 0};
    return poll(&socket, 1, static_cast<int>(kAskEvery.count())) != 0;
}

} // namespace

void CloseConnection::operator()(pg_conn* connection) const {
    PQfinish(connection);
}

ServerConnection connectTo(const ServerAddress& address, std::chrono::milliseconds wait,
                           const std::function<bool()>& goOn) {
    const PlainMessages plain;
    const auto giveUpAt = Clock::now() + wait;
    ServerConnection connection = begin(address);
    auto wanted = PGRES_POLLING_WRITING;
    while (PQstatus(connection.get()) != CONNECTION_BAD && wanted != PGRES_POLLING_OK) {
        while (!isReady(connection, wanted)) {
            if (Clock::now() >= giveUpAt || (goOn && !goOn())) throw unreachable(address, "timeout expired");
        }
        wanted = PQconnectPoll(connection.get());
    }
    if (PQstatus(connection.get()) != CONNECTION_OK)
        throw unreachable(address, PQerrorMessage(connection.get()));
    PQsetErrorVerbosity(connection.get(), PQERRORS_DEFAULT);
    return connection;
}

} // namespace veldona::store
