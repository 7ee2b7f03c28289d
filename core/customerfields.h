// The fields of a customer, one row each. From the rows come the card (its controls, the way of Enter,
// clearing, saving), the finder (its filters and their conditions) and the lists with their statement, which
// the printed list and its export take over.
//
// The rows stand in the order in which Enter walks the card. Statements, lists and the finder have orders of
// their own, which are given: there a row says its place. One that says none comes behind those that do.
#pragma once

#include <string>
#include <vector>

#include "platform/controls/lists.h"

namespace veldona {

// The control that a screen has for a field, and the label before it.
struct FieldEntry {
    enum class Kind { Text, List, Date };
    const char* control = ""; // none
    const char* caption = ""; // no label
    Kind kind = Kind::Text;
};

// Its column in the lists.
struct FieldListing {
    const char* caption = "";
    int width = 0; // none: in no list
    int at = 0;
    int queriedAt = 0;
};

// What the finder's condition asks of it.
struct FieldTest {
    enum class Match { Equal, Beginning, Anywhere };
    const char* words = ""; // with the column's name; none: the control tests nothing by itself
    Match match = Match::Beginning;
    int at = 0;
};

struct CustomerField {
    enum class Frame { None, General, Home, Work };
    enum class Saved { No, OnceAsText, AsText, WithoutBlanks, AsNumber, AsEmpty }; // once: by a new card

    const char* column; // "": its control is a help to the one of another row
    bool isRequired = false;
    Frame frame = Frame::None;
    FieldEntry card{};
    Saved saved = Saved::No;
    int savedAt = 0;
    FieldListing listed{};
    FieldEntry filter{};
    int filterAt = 0;
    FieldTest test{};
};

using CustomerFieldRefs = std::vector<const CustomerField*>;
[[nodiscard]] CustomerFieldRefs cardFields(CustomerField::Frame frame); // in the order of Enter
[[nodiscard]] const CustomerFieldRefs& savedFields();                   // in that of the statements
[[nodiscard]] CustomerFieldRefs filterFields();                         // in that of the finder
[[nodiscard]] const CustomerFieldRefs& testedFields();                  // in that of its condition

// What a list of customers shows, on the main screen and in the finder.
[[nodiscard]] std::vector<DataGrid::Column> customerListColumns();
// "SELECT … FROM MUSTKAYIT", with every column named; a condition and an order may follow.
[[nodiscard]] const std::string& customerListQuery();

// A condition on the account number that keeps the system's own accounts out; a sub-select follows.
inline constexpr const char* kWithoutSystemAccounts =
    " MUSTKAYIT.HSTNO NOT IN ('G3','G4','TI') AND MUSTKAYIT.HSTNO in ";

} // namespace veldona
