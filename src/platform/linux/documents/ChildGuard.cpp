#include "platform/linux/documents/ChildGuard.h"

#include <csignal>
#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace vorq {
namespace {

// A converter that unpacks a bomb onto the disk ends here.
constexpr rlim_t fileLimit = 512 << 20;

// An address sanitizer reserves more than any machine has.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool limitsMemory = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool limitsMemory = false;
#else
constexpr bool limitsMemory = true;
#endif
#else
constexpr bool limitsMemory = true;
#endif

void limitResource(__rlimit_resource resource, rlim_t most) {
    const rlimit both{most, most};
    ::setrlimit(resource, &both);
}

void writeFile(const char* path, const QByteArray& text) {
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0) return;
    [[maybe_unused]] const auto written =
        ::write(file, text.constData(), static_cast<std::size_t>(text.size()));
    ::close(file);
}

QByteArray mapToItself(unsigned int id) {
    return QByteArray::number(id) + ' ' + QByteArray::number(id) + " 1\n";
}

} // namespace

ChildGuard::ChildGuard(const Limits& limits)
    : m_limits(limits), m_userMap(mapToItself(::geteuid())), m_groupMap(mapToItself(::getegid())) {}

void ChildGuard::apply() const {
    ::setsid();
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    limitResource(RLIMIT_CORE, 0);
    limitResource(RLIMIT_FSIZE, fileLimit);
    limitResource(RLIMIT_CPU, static_cast<rlim_t>(m_limits.processorTime.count()));
    if (limitsMemory) limitResource(RLIMIT_AS, m_limits.memory);
    if (m_limits.isAlone) leaveNetwork();
}

// A user may do so in a user namespace of its own, unless the system forbids those.
void ChildGuard::leaveNetwork() const {
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNET) != 0) return;
    static const QByteArray deny = QByteArrayLiteral("deny");
    writeFile("/proc/self/setgroups", deny);
    writeFile("/proc/self/uid_map", m_userMap);
    writeFile("/proc/self/gid_map", m_groupMap);
}

} // namespace vorq
