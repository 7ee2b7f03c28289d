// Very many rows at once: how this engine takes them fastest.
#pragma once

#include <string>
#include <vector>

#include "platform/store/engine/engine.h"

namespace veldona::store {

class Filling {
public:
    // Begins the transaction, the indexes taken off.
    explicit Filling(Engine& engine);
    // The indexes stand, and the transaction is at its end.
    void finish();

private:
    void takeIndexesOff();
    void makeAgain(std::string index);

    Engine& engine_;
    std::vector<std::string> indexes_; // the statements that make them again
};

} // namespace veldona::store
