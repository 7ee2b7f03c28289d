// Whether the rows of the books are what their journal tells of them. A row that was written while the
// triggers were off leaves no entry, and shows here: as it stands, or as a later entry met it.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/store/engine/inquiry.h"

namespace veldona::journal {

// What the journal doesn't know of.
struct Stray {
    enum class Kind { Changed, Removed, PutBack, Added };
    std::string table;
    std::int64_t key = 0;
    Kind kind = Kind::Changed;
    std::string words; // what row it is; "" where it is gone
};

struct Strays {
    std::vector<Stray> first; // the first hundred
    std::int64_t all = 0;
    std::int64_t rowsTold = 0; // of which the journal tells
};

// Takes the entries oldest first, then looks at each row once. Of a row it keeps no value, only which columns
// were told of and a sum of theirs, 16 bytes; the sums are by a secret of this run, so that nobody can make
// two rows alike.
class ToldRows {
public:
    explicit ToldRows(const store::Inquiry& books);
    ~ToldRows();

    void take(std::string_view table, std::string_view kind, std::int64_t key, std::string_view before,
              std::string_view after);
    // In the same transaction; `isWhole`: nothing was taken out of the journal by age.
    [[nodiscard]] Strays strays(bool isWhole) const;

private:
    class Table;
    std::map<std::string, std::unique_ptr<Table>, std::less<>> tables_;
    const store::Inquiry& books_;
};

// "TAKSITODENEN tablosunda 57, 219 numaralı satışın ödemesi (150,00): günlüğe yazılmadan değiştirilmiş."
[[nodiscard]] std::string describe(const Stray& stray);
// A line a row below a heading; where there is none, how many rows are as they were told.
[[nodiscard]] std::string describe(const Strays& strays);

} // namespace veldona::journal
