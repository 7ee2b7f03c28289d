// Very many rows at once: how this engine takes them fastest.
#pragma once

#include <string>
#include <vector>

#include "platform/store/engine/engine.h"

namespace veldona::store {

class Filling {
public:
    // Begins the transaction, indexes and triggers taken off.
    explicit Filling(Engine& engine);
    // The indexes stand, and the transaction is at its end.
    void finish();

private:
    void takeIndexesOff();
    void takeTriggersOff();
    void makeAgain(std::string index);

    Engine& engine_;
    std::vector<std::string> indexes_, triggers_; // the statements that make them again
};

} // namespace veldona::store
