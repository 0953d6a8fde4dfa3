#include "support/ProcessLimits.h"

#include <malloc.h>
#include <sys/resource.h>

namespace vorq::gateway {

std::size_t raiseFileLimit() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 1024;
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 1024;
}

void boundHeap() {
    constexpr int arenas = 4;
    mallopt(M_ARENA_MAX, arenas);
}

void trimHeap() {
    malloc_trim(0);
}

} // namespace vorq::gateway
