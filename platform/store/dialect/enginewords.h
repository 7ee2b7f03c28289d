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
    std::string_view insertRow = "INSERT INTO "; // of one row, which goes in whole or not at all

    // A condition as a value, of which true is -1; and a value as a condition.
    std::string_view beforeTruth = "-(", behindTruth = ")";
    std::string_view isTrue = "";
    std::string_view whole = "", number = ""; // behind a number written as it is, that it be of this type
    std::string_view ascending = "", descending = " DESC"; // Null sorts below all
    // Where each selected column must be a group key, also one that has the same value in all rows.
    bool groupsBySelected = false;
    // The function of a table and a counter's value that answers the value, or the next one for Null; "":
    // none is needed.
    std::string_view counter = "";
    std::string_view behindInsert = ""; // that the engine learns the counter filled
};

} // namespace veldona::store
