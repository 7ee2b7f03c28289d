#include "backup/refusal.h"

#include <cerrno>

namespace veldona::backup {

std::string reasonOf(const std::error_code& code) {
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted)
        return "buraya yazma izniniz yok";
    if (code == std::errc::no_space_on_device) return "diskte yer kalmadı";
    if (code == std::errc::file_too_large) return "disk bu büyüklükte bir dosya almıyor";
    if (code == std::errc::read_only_file_system) return "disk yazmaya kapalı";
    if (code == std::errc::not_a_directory) return "bu adda bir klasör değil, bir dosya var";
    if (code == std::errc::file_exists) return "bu adda bir dosya var";
    if (code == std::errc::no_such_file_or_directory) return "bulunamadı";
    return code.message();
}

std::string lastReason() {
    return reasonOf({errno, std::generic_category()});
}

} // namespace veldona::backup
