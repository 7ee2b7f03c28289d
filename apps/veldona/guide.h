// The user's guide in a window of the program's own, at the chapter of a screen.
//
// It stays open beside the work. The text and its pictures are part of the program, so that they are at hand
// wherever it runs.
#pragma once

#include <string>

#include <QString>

namespace veldona {

class WindowHost;

// From here on the windows can show the guide.
void offerGuide(WindowHost& host);

// The anchor of the chapter that tells of the screen; empty: of none.
[[nodiscard]] QString chapterOf(const std::string& screen);

} // namespace veldona
