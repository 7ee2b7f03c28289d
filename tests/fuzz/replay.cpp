// Plays kept inputs through a fuzzer where no engine searches for new ones: replay FILE-OR-FOLDER …
#include <algorithm>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/fuzz/fuzzing.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> inputsBelow(const fs::path& given) {
    if (!fs::is_directory(given)) return {given};
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(given))
        files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

bool holds(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        std::cerr << file.string() << ": cannot be read\n";
        return false;
    }
    const std::string input{std::istreambuf_iterator<char>(in), {}};
    try {
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
        return true;
    } catch (const std::exception& error) {
        std::cerr << file.string() << ": " << error.what() << '\n';
        return false;
    }
}

} // namespace

int main(int count, char** arguments) {
    int played = 0;
    int failed = 0;
    std::vector<fs::path> given; // by their full names: a fuzzer may move elsewhere
    for (int i = 1; i < count; ++i)
        given.push_back(fs::absolute(arguments[i]));
    for (const fs::path& each : given) {
        for (const fs::path& file : inputsBelow(each)) {
            ++played;
            if (!holds(file)) ++failed;
        }
    }
    std::cout << played << " inputs, " << failed << " failed\n";
    return played > 0 && failed == 0 ? 0 : 1;
}
