// What goes wrong below the two faces. Each face makes a RuntimeError with a number of its family of it.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace veldona::store {

class StoreError : public std::exception {
public:
    enum class Kind {
        Syntax,       // the text is no statement of the dialect, or more than one
        UnknownName,  // no such table, query, column or function
        TypeMismatch, // a value does not read as the column's type, or a conversion function failed
        Constraint,
        FileMissing,
        NetworkDisk,   // the file lies on another machine's disk
        WrongPassword, // or a damaged first page: the engine cannot tell them apart
        Damaged,
        Locked, // another workstation held the file longer than the timeout
        DiskFull,
        InputOutput,
        ReadOnly,
        TooLarge, // an answer beyond its ReadBounds
        GivenUp,  // by its ReadBounds
        Injected, // asked for by Workspace::failWrite
        Other,
    };

    StoreError(Kind kind, std::string description) : kind_(kind), description_(std::move(description)) {}
    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] const std::string& description() const { return description_; }
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

private:
    Kind kind_;
    std::string description_; // Turkish, for the operator; never the engine's text, never a password
};

[[nodiscard]] inline StoreError tooLarge() {
    return {StoreError::Kind::TooLarge,
            "Sorgunun sonucu belleğe sığmayacak kadar büyük. Tabloları birbirine bağlayan koşul unutulmuş "
            "olabilir; sorguyu daraltın."};
}

} // namespace veldona::store
