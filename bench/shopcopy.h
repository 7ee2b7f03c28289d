// A copy of a shop beside it, removed at the end: the shop stays as it was made.
#pragma once

#include <stdlib.h>

#include "core/delivered.h"
#include "platform/desktop/paths.h"
#include <filesystem>
#include <stdexcept>
#include <string>

namespace veldona::bench {

class Copy {
public:
    explicit Copy(const std::string& root) : root_(root + ".XXXXXX") {
        if (mkdtemp(root_.data()) == nullptr) throw std::runtime_error("no folder beside " + root);
        const std::filesystem::path database = Paths(root_).toNative(kDatabasePath);
        std::filesystem::create_directories(database.parent_path());
        std::filesystem::copy_file(Paths(root).toNative(kDatabasePath), database);
    }
    ~Copy() {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    [[nodiscard]] const std::string& root() const { return root_; }

private:
    std::string root_;
};

} // namespace veldona::bench
