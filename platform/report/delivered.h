// The layouts that come with the program, held in the program itself, and the folder in which a shop keeps
// and edits its own.
//
// A banded layout (".xml") that is missing from the folder is taken from the program, so those reports always
// print. A template (".rpt") is read from the folder only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/report/layout.h"

namespace veldona::report {

struct DeliveredLayout {
    std::string_view file; // its name in the folder
    std::string_view xml;
};

[[nodiscard]] const std::vector<DeliveredLayout>& deliveredLayouts();

// The shop's own FOLDER/NAME.xml where there is one, else the delivered layout. `folder` is a path of this
// machine. Error 53 where neither exists; a broken file of the shop's is an error, never passed over.
[[nodiscard]] Layout bandedLayout(const std::string& folder, const std::string& name);

// Writes the delivered layouts that the folder does not have, and makes the folder. Of the files that are
// there the ones of an earlier release that the shop never edited are brought up to date; all others stay as
// they are. Error 75 where one cannot be written.
void writeMissingLayouts(const std::string& folder);

} // namespace veldona::report
