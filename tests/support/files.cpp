#include "tests/support/files.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace veldona::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "veldona-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    fs::remove_all(path_);
}

std::ptrdiff_t TemporaryFolder::filesInside() const {
    return std::distance(fs::directory_iterator(path_), fs::directory_iterator());
}

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

} // namespace veldona::test
