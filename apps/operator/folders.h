// The folder that stands for drive C: in one scenario: one that is given and stays, or a new one that goes
// again.
#pragma once

#include <optional>
#include <string>

namespace veldona::console {

class DriveFolder {
public:
    // Nothing given: a new temporary folder, removed with this. A folder that is given is made where it is
    // missing. Raises std::filesystem::filesystem_error where there can be none.
    explicit DriveFolder(const std::optional<std::string>& given);
    ~DriveFolder();
    DriveFolder(const DriveFolder&) = delete;
    DriveFolder& operator=(const DriveFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
    bool isTemporary_;
};

} // namespace veldona::console
