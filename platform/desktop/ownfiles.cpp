#include "platform/desktop/ownfiles.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace veldona {

void keepToOwner() {
    umask(S_IRWXG | S_IRWXO);
    const rlimit none{0, 0};
    static_cast<void>(setrlimit(RLIMIT_CORE, &none)); // lowering one's own limit is always allowed
    prctl(PR_SET_DUMPABLE, 0); // a handler of crashes that takes no limit gets nothing either
}

} // namespace veldona
