// The same rows as the program's steps need, fetched and written by statements that libpq knows by name,
// those that wait for no answer in one trip: what the steps would cost on a server if there were no program.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/postgres/wire.h"

namespace veldona::bench {

struct ServerSale {
    std::string account, sale;
};

class BareServer {
public:
    BareServer(const store::ServerAddress& address, const std::string& schema, DateTime now);

    // As the steps of BareEngine.
    void load(const std::string& account);
    void open(const ServerSale& key);
    void pay(const ServerSale& key);
    void save(const std::string& account);
    // Planned and paid of each sale up to now, all names, and as many scratch rows as there are sales behind,
    // written, read with their customers, gone again. The number of rows.
    int overdue();

    // Sales that owe more than 100,00, evenly over all of them.
    [[nodiscard]] std::vector<ServerSale> sales(std::size_t count);

private:
    using Answers = std::vector<store::ServerAnswer>;
    [[nodiscard]] store::Command known(const std::string& name, const std::vector<std::string>& values) const;
    Answers run(const std::vector<store::Command>& commands);
    void addFallenDue(std::vector<store::Command>& commands, const std::string& account) const;
    void addPaid(std::vector<store::Command>& commands, const std::string& account,
                 const store::ServerAnswer& fallenDue) const;

    store::Wire wire_;
    std::string now_, firstOfMonth_, endOfToday_; // as stored
    std::vector<std::string> dueDays_;            // of a sale of twelve, as stored
    std::int64_t lastSale_ = 0; // below it a number is free: the program numbers upward from the highest
    std::size_t bytes_ = 0;     // of all cells that were taken out
};

} // namespace veldona::bench
