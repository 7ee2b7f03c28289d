// The boxes in which a file or a folder of this machine is looked for, in the house's words.
#pragma once

#include <optional>
#include <string>

#include <QString>

class QFileDialog;

namespace veldona {

class WindowHost;

// `accept`: the word of the button that ends it.
void dressFileBox(QFileDialog& box, const QString& accept);

// An existing one; nothing where the box was cancelled.
[[nodiscard]] std::optional<std::string> askForFolder(WindowHost& host, const QString& title,
                                                      const QString& start);
[[nodiscard]] std::optional<std::string> askForFile(WindowHost& host, const QString& title,
                                                    const QString& filter, const QString& start);

} // namespace veldona
