// Writes that are to fail on purpose, so that a test sees what the program does then.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldona::store {

class WriteFaults {
public:
    // From now on the nth write to `table`, counted from 1, fails once.
    void add(int nth, std::string_view table);
    // Counts one write; raises StoreError{Injected} where it is one that was asked to fail.
    void countWrite(std::string_view table);

private:
    struct Fault {
        std::string table;
        int writesLeft;
    };
    std::vector<Fault> faults_;
};

} // namespace veldona::store
