// The rows of a layout's group, and for each of them what the group's parts are made from.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "platform/report/layout.h"
#include "platform/report/rows.h"

namespace veldona::report {

[[nodiscard]] std::vector<const DataSet*> pointersTo(const std::vector<DataSet>& data);

class GroupRows {
public:
    // `data` must outlive it. Error where it has no rows of the group's query, or these no column of its key.
    GroupRows(const Group& group, const std::vector<DataSet>& data, const std::string& file);

    [[nodiscard]] std::size_t count() const { return own_->rowCount(); }

    // The rows of one row's key.
    class Slice {
    public:
        [[nodiscard]] std::vector<const DataSet*> all() const;

    private:
        friend class GroupRows;
        std::vector<const DataSet*> whole_;
        std::vector<DataSet> limited_;
    };
    [[nodiscard]] Slice at(std::size_t row) const;

private:
    // A set of rows that has the key's column, and which of its rows belong to which key.
    struct Keyed {
        const DataSet* data;
        std::unordered_map<std::string, std::vector<std::size_t>> rowsOf;
    };
    const DataSet* own_ = nullptr;
    int keyColumn_ = -1;
    std::vector<const DataSet*> whole_;
    std::vector<Keyed> keyed_;
};

} // namespace veldona::report
