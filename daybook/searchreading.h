// The search index as the books stand: read when it is first asked for, and anew once a customer, a sale line
// or a product was written, by whomever.
#pragma once

#include <string>

#include "daybook/searchindex.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

// What outlives the search screen.
class SearchMemory {
public:
    // Reads what is out of date. Raises what the statements raise.
    const SearchIndex& index(Session& session);

    std::string typedLast; // stands in the field again the next time

private:
    SearchIndex index_;
    adodb::ChangeWatch customers_{{"MUSTKAYIT"}};
    adodb::ChangeWatch sales_{{"URUNAL", "URUNTANITIM"}};
    bool isWhole_ = false; // no reading was broken off
};

} // namespace veldona
