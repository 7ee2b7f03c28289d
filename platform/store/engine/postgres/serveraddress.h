// Where books lie that a server keeps, in libpq's own words: "host=… dbname=… user=…", a service, an address
// that begins with postgresql://.
//
// A password has no place in it: libpq finds one in the passfile or the service file, which are their owner's
// alone.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace veldona::store {

class ServerAddress {
public:
    // `source` is named in what is told of it: a file, an option. Lines that begin with # are comments.
    // Raises StoreError where the text is no address, or holds a password.
    ServerAddress(std::string_view text, std::string source);
    // What the file beside the books' own, of the same name and the ending .sunucu, says; nothing where none
    // stands. One that stands and can't be read raises StoreError: the file of books may be an old one.
    [[nodiscard]] static std::optional<ServerAddress> beside(const std::string& booksPath);
    [[nodiscard]] static std::string fileBeside(const std::string& booksPath);

    // libpq's keywords; those that the text leaves to libpq are not among them.
    [[nodiscard]] const std::map<std::string, std::string>& keywords() const { return keywords_; }
    // The same server for another user.
    [[nodiscard]] ServerAddress as(const std::string& user) const;
    // The address as a text again, to be written into a file.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] const std::string& source() const { return source_; }
    // "sunucu kasa.dukkan, kapı 5432, veritabanı veldona, kullanıcı kasa1": for the operator.
    [[nodiscard]] std::string shown() const;

private:
    std::map<std::string, std::string> keywords_;
    std::string source_;
};

} // namespace veldona::store
