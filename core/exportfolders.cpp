#include "core/exportfolders.h"

#include <filesystem>

#include "platform/runtime/error.h"

namespace veldona {

std::string aktarKlasoru(const Session& session, std::string_view bicim) {
    std::string klasor = session.desktop.paths.appPath() + "\\aktar";
    if (!bicim.empty()) klasor.append("\\").append(bicim);
    return klasor;
}

void klasorAc(Session& session, const std::string& klasor) {
    const std::filesystem::path path = session.desktop.paths.toNative(klasor);
    std::error_code error;
    if (!std::filesystem::is_directory(path.parent_path(), error)) raise(ErrorNumber::PathNotFound);
    if (!std::filesystem::create_directory(path, error)) raise(ErrorNumber::PathFileAccess);
}

std::string aktarimDosyasi(Session& session, std::string_view bicim, const std::string& ad,
                           const std::string& uzanti) {
    const std::string klasor = session.desktop.paths.toNative(aktarKlasoru(session, bicim));
    std::error_code error;
    std::filesystem::create_directories(klasor, error);
    if (error) raise(ErrorNumber::PathFileAccess);
    const std::string beginning = klasor + "/" + ad;
    std::string dosya = beginning + uzanti;
    for (int i = 2; std::filesystem::exists(dosya); ++i)
        (dosya = beginning).append(" (").append(std::to_string(i)).append(")").append(uzanti);
    return dosya;
}

} // namespace veldona
