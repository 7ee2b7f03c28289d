// Rows as the operator sees them, for whoever looks at a control without knowing its kind.
#pragma once

#include <string>
#include <string_view>

namespace veldona {

class ShownRows {
public:
    virtual ~ShownRows() = default;
    [[nodiscard]] virtual int countShown() const = 0;            // a sheet's heading is one
    [[nodiscard]] virtual int selectedShown() const = 0;         // -1: none
    [[nodiscard]] virtual int columnsShown() const { return 0; } // 0: a list, whose rows are one text each
    [[nodiscard]] virtual int columnNamed(std::string_view) const { return -1; } // -1: none
    [[nodiscard]] virtual std::string textShown(int row,
                                                int column) const = 0; // of a list: whatever the column
};

} // namespace veldona
