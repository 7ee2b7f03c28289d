// Names and surnames of the accounts of a report.
//
// A look-up gives what a question for that one account gives. Where very many accounts are asked for, all are
// read at once; a number that is met in another spelling is asked of the store after all.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace veldona {

struct Session;

struct AccountName {
    std::string AD, SOYAD; // "" where the books have none
};

class AccountNames {
public:
    // `lookUps`: how many there will be at most.
    AccountNames(Session& session, std::size_t lookUps);
    [[nodiscard]] AccountName of(const std::string& mustno);

private:
    void readAll();

    Session& session_;
    std::unordered_map<std::string, AccountName> known_;
};

} // namespace veldona
