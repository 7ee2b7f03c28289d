// A text that is nobody's business: a password. Its bytes lie in one place of their own and are wiped when
// they go.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldona {

class Secret {
public:
    Secret() = default;
    explicit Secret(std::string_view text) : bytes_(text.begin(), text.end()) {}
    Secret(const Secret&) = default;
    Secret(Secret&& other) noexcept : bytes_(std::move(other.bytes_)) { other.bytes_.clear(); }
    Secret& operator=(Secret other) noexcept {
        bytes_.swap(other.bytes_);
        return *this;
    }
    ~Secret() { wipe(bytes_.data(), bytes_.size()); }

    [[nodiscard]] std::string_view text() const { return {bytes_.data(), bytes_.size()}; }
    [[nodiscard]] bool isEmpty() const { return bytes_.empty(); }
    friend bool operator==(const Secret&, const Secret&) = default;

    // Takes the text over: nothing of it is left in `text`.
    [[nodiscard]] static Secret taken(std::string& text);

private:
    static void wipe(char* bytes, std::size_t size);

    std::vector<char> bytes_;
};

} // namespace veldona
