// What two engines say differently. All else that the writer says each of them must understand, and each has
// the functions that begin with "vd_".
#pragma once

#include <string_view>

namespace veldona::store {

struct EngineWords {
    std::string_view byAlphabet;  // behind a text whose comparison or order is the alphabet's
    std::string_view parameter;   // in front of its number
    std::string_view lastCounter; // the statement that answers the counter filled last
    std::string_view firstOfTwo;  // the function that answers its second value where the first is Null
};

} // namespace veldona::store
