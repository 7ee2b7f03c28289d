// What each bench program does with its arguments: one shop after another, at the hour that the shops were
// made for.
#pragma once

#include <cstdio>
#include <exception>
#include <string>

#include "platform/runtime/datetime.h"

namespace veldona::bench {

// The exit code of the program `name`.
inline int overShops(const char* name, int count, char** arguments,
                     void (*benchShop)(const std::string& root, DateTime now)) {
    if (count < 2) {
        std::fprintf(
            stderr,
            "usage: %s FOLDER...   each made by vorel-hazirla --ornek --kok FOLDER --bugun 22/11/2026\n",
            name);
        return 2;
    }
    try {
        for (int i = 1; i < count; ++i)
            benchShop(arguments[i], DateTime::of(2026, 11, 22, 10, 30));
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s: %s\n", name, failure.what());
        return 1;
    }
}

} // namespace veldona::bench
