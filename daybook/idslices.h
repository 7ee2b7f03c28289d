// The rows of a table, kept in slices of their counters, so that a row that was written has its slice read
// anew and no other.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "daybook/staleparts.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

template <class Row> class IdSlices {
public:
    using Read = Row (*)(const store::Statement& row);

    IdSlices(std::string table, std::string columns, Read read)
        : table_(std::move(table)), columns_(std::move(columns)), read_(read) {}

    void forget() {
        slices_.clear();
        stale_.reset(0);
    }
    void touch(std::int64_t id) {
        if (stale_.count() > 0) stale_.touch(sliceOf(id));
    }
    // One slice; false where none was stale.
    bool readNext(adodb::Connection& books) {
        if (stale_.count() == 0) layOut(books);
        const auto slice = stale_.next();
        if (!slice) return false;
        std::vector<Row> rows;
        rows.reserve(slices_[*slice].size());
        books.walk("SELECT " + columns_ + " FROM " + table_ + where(*slice) + " ORDER BY ID",
                   [&](const store::Statement& row) { rows.push_back(read_(row)); });
        slices_[*slice] = std::move(rows);
        stale_.markRead(*slice);
        return true;
    }
    // In the order of their counters.
    template <class Visit> void each(const Visit& visit) const {
        for (const std::vector<Row>& slice : slices_)
            for (const Row& row : slice)
                visit(row);
    }

private:
    static constexpr std::int64_t kRows = 1024; // of a slice, where the counters leave nothing out

    // Asked one by one, each of them is answered by an index.
    void layOut(adodb::Connection& books) {
        const auto number = [&](const char* what) {
            std::int64_t found = 0;
            books.walk("SELECT " + std::string(what) + " FROM " + table_,
                       [&](const store::Statement& row) { found = row.whole(0); });
            return found;
        };
        const std::int64_t slices = number("COUNT(*)") / kRows + 1;
        first_ = number("MIN(ID)");
        width_ = std::max(kRows, (number("MAX(ID)") - first_) / slices + 1);
        slices_.resize(static_cast<std::size_t>(slices));
        stale_.reset(slices_.size());
    }
    // Those below the first one and above the last one belong to them.
    [[nodiscard]] std::size_t sliceOf(std::int64_t id) const {
        return static_cast<std::size_t>(
            std::clamp((id - first_) / width_, std::int64_t{0}, std::ssize(slices_) - 1));
    }
    [[nodiscard]] std::string where(std::size_t slice) const {
        const std::int64_t begin = first_ + static_cast<std::int64_t>(slice) * width_;
        std::string text;
        if (slice > 0) text += " WHERE ID>=" + std::to_string(begin);
        if (slice + 1 < slices_.size())
            text += (text.empty() ? " WHERE ID<" : " AND ID<") + std::to_string(begin + width_);
        return text;
    }

    std::string table_, columns_;
    Read read_;
    std::int64_t first_ = 0, width_ = 1;
    std::vector<std::vector<Row>> slices_;
    StaleParts stale_;
};

} // namespace veldona
