#include "platform/store/engine/postgres/serveraddress.h"

#include <libpq-fe.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>

#include "platform/runtime/text.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

namespace fs = std::filesystem;
using Kind = StoreError::Kind;

constexpr std::uintmax_t kMostBytes = std::uintmax_t{16} * 1024;

StoreError refused(const std::string& source, const std::string& why) {
    return {Kind::Other, "Defterin sunucusu anlaşılamadı (" + source + "): " + why};
}

// The lines that are no comments, as one.
std::string withoutComments(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::string kept;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string line = trim(visibleText(text.substr(at, end - at)));
        if (!line.starts_with('#') && !line.empty()) kept.append(kept.empty() ? 0 : 1, ' ').append(line);
        at = end + 1;
    }
    return kept;
}

struct FreeOptions {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

// Each of these is a secret. What libpq says of a text that it can't read quotes it, so it is not shown.
bool isSecret(std::string_view keyword) {
    return keyword == "password" || keyword == "sslpassword";
}

bool isLocal(const std::map<std::string, std::string>& keywords) {
    for (const char* keyword : {"host", "hostaddr"}) {
        const auto found = keywords.find(keyword);
        if (found == keywords.end()) continue;
        const std::string& host = found->second;
        return host.starts_with('/') || host.starts_with('@') || host == "localhost" || host == "127.0.0.1" ||
               host == "::1";
    }
    return true;
}

std::string quoted(const std::string& value) {
    std::string text = "'";
    for (const char letter : value) {
        if (letter == '\'' || letter == '\\') text += '\\';
        text += letter;
    }
    return text + '\'';
}

} // namespace

ServerAddress::ServerAddress(std::string_view text, std::string source) : source_(std::move(source)) {
    if (text.size() > kMostBytes || text.find('\0') != std::string_view::npos || validUtf8(text) != text)
        throw refused(source_, "içindeki bir bağlantı metni değil.");
    const std::string plain = withoutComments(text);
    if (plain.empty()) throw refused(source_, "içinde sunucunun adresi yok.");
    const std::unique_ptr<PQconninfoOption, FreeOptions> options(PQconninfoParse(plain.c_str(), nullptr));
    if (options == nullptr)
        throw refused(source_, "bağlantı metni okunamadı. Örnek: host=kasa.dukkan dbname=veldona user=kasa1");
    for (const PQconninfoOption* option = options.get(); option->keyword != nullptr; ++option) {
        if (option->val == nullptr || *option->val == '\0') continue;
        if (isSecret(option->keyword))
            throw refused(source_, "içinde parola yazıyor. Parolayı buradan silin ve parola dosyasına "
                                   "(~/.pgpass) yazın; buradaki parolayı herkes okuyabilir.");
        keywords_[option->keyword] = option->val;
    }
    if (keywords_.contains("replication")) throw refused(source_, "replication burada kullanılamaz.");
    if (keywords_.contains("service")) return; // whose file says the rest
    if (!keywords_.contains("dbname")) throw refused(source_, "veritabanının adı (dbname=…) yok.");
    // Names and debts don't go over a network for all to read because somebody forgot a word.
    if (!keywords_.contains("sslmode") && !isLocal(keywords_)) keywords_["sslmode"] = "require";
}

std::string ServerAddress::fileBeside(const std::string& booksPath) {
    return fs::path(booksPath).replace_extension(".sunucu").string();
}

std::optional<ServerAddress> ServerAddress::beside(const std::string& booksPath) {
    const std::string path = fileBeside(booksPath);
    std::error_code failed;
    const fs::file_status status = fs::symlink_status(path, failed);
    if (status.type() == fs::file_type::not_found) return std::nullopt;
    const auto unreadable = [&path] {
        return refused(path, "dosya okunamadı. Defter sunucuda olduğu için yanındaki dosya açılmadı; bu "
                             "dosyanın yerini ve iznini denetleyin.");
    };
    if (!fs::is_regular_file(path, failed)) throw unreadable();
    std::ifstream file(path, std::ios::binary);
    std::string text(kMostBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (file.bad() || !file.is_open()) throw unreadable();
    text.resize(static_cast<std::size_t>(file.gcount()));
    return ServerAddress(text, path);
}

ServerAddress ServerAddress::as(const std::string& user) const {
    ServerAddress address = *this;
    address.keywords_["user"] = user;
    return address;
}

std::string ServerAddress::text() const {
    std::string text;
    for (const auto& [keyword, value] : keywords_)
        text += (text.empty() ? "" : " ") + keyword + '=' + quoted(value);
    return text;
}

std::string ServerAddress::shown() const {
    constexpr std::pair<const char*, const char*> kShown[] = {
        {"service", "hizmet"}, {"host", "sunucu"},       {"hostaddr", "adres"},
        {"port", "kapı"},      {"dbname", "veritabanı"}, {"user", "kullanıcı"}};
    std::string text;
    for (const auto& [keyword, word] : kShown) {
        const auto found = keywords_.find(keyword);
        if (found != keywords_.end())
            text += (text.empty() ? "" : ", ") + std::string(word) + ' ' + found->second;
    }
    return text;
}

} // namespace veldona::store
