// The parts of the writer that all of its sources use.
#pragma once

#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/writer.h"

namespace veldona::store::sql {

// An expression that is true or false: a condition to the engine, -1 or 0 as a value.
[[nodiscard]] bool isTruth(const Expr& expr);
// A column of a table declares the alphabet's order; whatever else is text must say that it is compared by
// it.
[[nodiscard]] bool declaresAlphabet(const Expr& expr);
[[nodiscard]] bool mustSayAlphabet(const Expr& leading, const Expr& other);

[[nodiscard]] constexpr Tightness below(Tightness tightness) {
    return static_cast<Tightness>(static_cast<int>(tightness) + 1);
}

// The engine's parser has a stack of a hundred symbols. A statement that would run over it is refused here,
// with our own words, instead of failing there.
class Writer::DepthGuard {
public:
    DepthGuard(Writer& writer, int symbols) : writer_(writer), symbols_(symbols) {
        if (writer.depth_ + symbols > kRoom) throw StoreError(StoreError::Kind::Syntax, kTooNested);
        writer.depth_ += symbols;
    }
    ~DepthGuard() { writer_.depth_ -= symbols_; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;

private:
    static constexpr int kRoom = 80; // the rest is for the statement around
    Writer& writer_;
    int symbols_;
};

template <class Write> void Writer::grouped(Tightness have, Tightness need, Write&& write) {
    if (have >= need) return write();
    const DepthGuard parenthesis(*this, 1);
    put("(");
    write();
    put(")");
}

template <class Write> void Writer::function(std::string_view name, Write&& write) {
    const DepthGuard opened(*this, 5);
    put(name);
    put("(");
    write();
    put(")");
}

} // namespace veldona::store::sql
