#include "platform/store/engine/networkdisk.h"

#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string_view>

#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

// By the numbers of statfs(2); not each of them has a name in the headers.
constexpr std::uint32_t kNetwork[] = {
    0x6969,     // NFS
    0x517b,     // SMB
    0xff534d42, // CIFS
    0xfe534d42, // SMB2
    0x564c,     // NCP
    0x5346414f, // AFS
    0x6b414653, // AFS of the kernel
    0x73757245, // Coda
    0x00c36400, // Ceph
    0x7461636f, // OCFS2
};
// These may be a stick, a folder of the machine around this one, or a share: the mount's own words tell.
constexpr std::uint32_t kFuse = 0x65735546;
constexpr std::uint32_t k9p = 0x01021997;

bool isOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// "36 35 98:0 /root /mount options … - type source superoptions" of /proc/self/mountinfo.
std::optional<bool> isNetworkLine(const std::string& line, const std::string& device) {
    std::istringstream words(line);
    std::string skipped, found, type, source, options;
    if (!(words >> skipped >> skipped >> found) || found != device) return std::nullopt;
    static_cast<void>(std::find(std::istream_iterator<std::string>(words), {}, "-"));
    words >> type >> source >> options;
    return isNetworkMount(type, options);
}

bool isNetworkByMount(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;
    const std::string device =
        std::to_string(major(status.st_dev)) + ':' + std::to_string(minor(status.st_dev));
    std::ifstream mounts("/proc/self/mountinfo");
    for (std::string line; std::getline(mounts, line);)
        if (const auto answer = isNetworkLine(line, device)) return *answer;
    return false;
}

bool isOnNetwork(const std::string& path) {
    struct statfs status {};
    if (statfs(path.c_str(), &status) != 0) return false; // who opens the file says why
    const auto type = static_cast<std::uint32_t>(status.f_type);
    if (std::find(std::begin(kNetwork), std::end(kNetwork), type) != std::end(kNetwork)) return true;
    return (type == kFuse || type == k9p) && isNetworkByMount(path);
}

} // namespace

bool isNetworkMount(const std::string& type, const std::string& options) {
    if (type == "9p") return options.find("trans=tcp") != options.npos;
    return isOneOf(type, {"fuse.sshfs", "fuse.gvfsd-fuse", "fuse.smbnetfs", "fuse.davfs", "fuse.davfs2",
                          "fuse.rclone", "fuse.curlftpfs", "fuse.glusterfs", "fuse.s3fs", "fuse.cifs"});
}

void refuseNetworkDisk(const std::string& path) {
    namespace fs = std::filesystem;
    std::error_code unreachable;
    const fs::path folder = fs::absolute(path, unreachable).parent_path();
    if (!isOnNetwork(fs::exists(path, unreachable) ? path : folder.string())) return;
    throw StoreError(
        StoreError::Kind::NetworkDisk,
        "Veritabanı açılmadı: " + path +
            " bir ağ klasöründe. Ağ klasöründeki defterde iki bilgisayarın kayıtları birbirini siler. "
            "Dosyaya dokunulmadı. Defteri tek bir bilgisayarın kendi diskine koyun ve orada kullanın; birkaç "
            "bilgisayar birlikte kullanacaksa defteri bir PostgreSQL sunucusuna taşıyın (vorel-sunucu "
            "--kur).");
}

} // namespace veldona::store
