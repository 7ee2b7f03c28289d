#include "apps/tool/optionreader.h"

#include <utility>

namespace veldona {

OptionReader& OptionReader::flag(const std::string& name, bool& into) {
    flags_[name] = &into;
    return *this;
}

OptionReader& OptionReader::value(const std::string& name, std::optional<std::string>& into) {
    return value(name, [&into](const std::string& text) { into = text; });
}

OptionReader& OptionReader::value(const std::string& name, std::function<void(const std::string&)> take) {
    values_[name] = std::move(take);
    return *this;
}

OptionReader& OptionReader::word(std::function<bool(const std::string&)> take) {
    word_ = std::move(take);
    return *this;
}

void OptionReader::read(std::span<const char* const> arguments) const {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string word = arguments[i];
        if (const auto flag = flags_.find(word); flag != flags_.end()) {
            *flag->second = true;
        } else if (const auto value = values_.find(word); value != values_.end()) {
            if (++i == arguments.size() || *arguments[i] == '\0')
                throw UsageError(word + " bir değer ister.");
            value->second(arguments[i]);
        } else if (word.empty() || (word.size() > 1 && word.front() == '-') || !word_ || !word_(word)) {
            refuse(word);
        }
    }
}

void OptionReader::refuse(const std::string& word) const {
    throw UsageError("Bilinmeyen seçenek: " + word + "\n" + usage_);
}

} // namespace veldona
