// Drive C: is a folder of this machine. The program writes its own fixed paths; here they become real ones.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace veldona {

inline constexpr std::string_view kInstallFolder = "C:\\VELDONA\\Veldona_Taksit";

class Paths {
public:
    // `root`: the folder that stands for drive C:.
    explicit Paths(std::string root) : root_(std::move(root)) {}

    [[nodiscard]] const std::string& root() const { return root_; }
    // "C:\A\B" to root/A/B; a name that exists in other letters' case is found. Error 76 for a path of
    // another drive, or one that climbs out by "..".
    [[nodiscard]] std::string toNative(std::string_view path) const;
    // The folder of the executable, as the program sees it.
    [[nodiscard]] std::string appPath() const { return std::string(kInstallFolder); }

private:
    std::string root_;
};

// The folder for drive C: where nobody names one: the portable folder "C" beside the executable where that
// holds the database, else the user's data folder. `executableFolder` and `userDataFolder` are paths of this
// machine.
[[nodiscard]] std::string chooseRoot(const std::string& executableFolder, const std::string& userDataFolder);
// $XDG_DATA_HOME/veldona, or ~/.local/share/veldona.
[[nodiscard]] std::string userDataFolder();
// $XDG_CONFIG_HOME/veldona, or ~/.config/veldona.
[[nodiscard]] std::string userSettingsFolder();
[[nodiscard]] std::string executableFolder();

// One line, closed by a line end, in place of what the file held. Error 75 where it cannot be written.
void writeTextFile(const std::string& nativePath, std::string_view line);
// Error 53 where there is no such file, 75 where it cannot be deleted.
void deleteFile(const std::string& nativePath);

} // namespace veldona
