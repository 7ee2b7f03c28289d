// Files of a test: a folder that goes again, and bytes read and written whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace veldona::test {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::string operator/(const std::string& name) const { return (path_ / name).string(); }
    [[nodiscard]] std::ptrdiff_t filesInside() const; // folders count as one

private:
    std::filesystem::path path_;
};

[[nodiscard]] std::string bytesOf(const std::filesystem::path& path);
void writeBytes(const std::filesystem::path& path, const std::string& bytes);

} // namespace veldona::test
