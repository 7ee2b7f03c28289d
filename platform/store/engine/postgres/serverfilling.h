// Very many rows at once, by COPY: the indexes are off meanwhile, and stand again at the end of the one
// transaction.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/engine/engine.h"
#include "platform/store/engine/postgres/session.h"

namespace veldona::store {

class ServerFilling : public std::enable_shared_from_this<ServerFilling> {
public:
    explicit ServerFilling(std::shared_ptr<Session> session);

    // Of an INSERT of the writer's; what it is run with goes out in large portions.
    [[nodiscard]] std::unique_ptr<Statement> insertion(std::string_view sql);
    void add(const std::string& target, std::string_view line);
    void finish();

private:
    void send(const std::string& target, std::string& lines);
    void takeIndexesOff();
    void setTriggers(const std::string& how);
    void makeAgain(const std::string& index);

    std::shared_ptr<Session> session_;
    std::map<std::string, std::string> lines_; // by table and columns
    std::vector<std::string> indexes_;
};

} // namespace veldona::store
