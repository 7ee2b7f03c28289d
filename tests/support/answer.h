// What an engine answers: cells joined by "|", rows by a line end.
#pragma once

#include <string>

#include "platform/store/engine/engine.h"

namespace veldona::test {

inline std::string answerOf(store::Engine& engine, const std::string& sql) {
    const auto rows = engine.prepare(sql);
    std::string text;
    for (bool isFirst = true; rows->step(); isFirst = false) {
        text += isFirst ? "" : "\n";
        for (int i = 0; i < rows->columnCount(); ++i)
            text.append(i > 0 ? "|" : "").append(rows->text(i));
    }
    return text;
}

} // namespace veldona::test
