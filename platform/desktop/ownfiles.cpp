#include "platform/desktop/ownfiles.h"

#include <sys/resource.h>
#include <sys/stat.h>

namespace veldona {

void keepToOwner() {
    umask(S_IRWXG | S_IRWXO);
    const rlimit none{0, 0};
    static_cast<void>(setrlimit(RLIMIT_CORE, &none)); // lowering one's own limit is always allowed
}

} // namespace veldona
