// The machine's own settings that the start asks for: its locale, and the register of data sources.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace veldona {

// The short date of the process is fixed to day, month, year whatever the machine's locale says; this keeps
// what was asked of it, as the place where a system with such a setting would be told.
class SystemLocale {
public:
    static constexpr std::uint32_t kTurkish = 1055;
    static constexpr int kShortDate = 31;
    [[nodiscard]] std::uint32_t defaultLcid() const { return kTurkish; }
    bool setInfo(std::uint32_t lcid, int item, std::string value);
    [[nodiscard]] std::string info(std::uint32_t lcid, int item) const;

private:
    std::map<std::pair<std::uint32_t, int>, std::string> items_;
};

// Named data sources, kept in the file ODBC.INI of drive C:, one section a name.
class DataSources {
public:
    explicit DataSources(std::string iniPath) : iniPath_(std::move(iniPath)) {}
    // Request 4 adds a system data source. `attributes`: "DSN=name;DBQ=path". False where the name stands
    // already, the request or the attributes are not understood, or the file cannot be written; nothing is
    // raised.
    bool configure(int request, std::string_view driver, std::string_view attributes);
    // The path (as the program writes it) that a name stands for.
    [[nodiscard]] std::optional<std::string> find(std::string_view name) const;

private:
    std::string iniPath_;
};

} // namespace veldona
