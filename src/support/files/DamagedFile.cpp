#include "support/files/DamagedFile.h"

#include "support/files/LinkTarget.h"

#include <QDateTime>
#include <QFile>

#include <cerrno>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int mostOfOneSecond = 1000;

std::optional<struct stat> statusOf(const QByteArray& path) {
    struct stat status{};
    if (::lstat(path.constData(), &status) != 0) return std::nullopt;
    return status;
}

bool isSameFile(const struct stat& one, const struct stat& other) {
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// As in ISO 8601, but for the colons, which some file systems do not take.
QByteArray timeOf(const struct stat& status) {
    return QDateTime::fromSecsSinceEpoch(status.st_mtim.tv_sec, Qt::UTC)
        .toString(u"yyyy-MM-dd'T'HH-mm-ss'Z'"_s)
        .toLatin1();
}

} // namespace

std::expected<QString, QString> keepDamagedFile(const QString& path) {
    const QByteArray target = linkTarget(path);
    const auto status = statusOf(target);
    if (!status || !S_ISREG(status->st_mode) || status->st_size == 0) return QString();
    const QByteArray name = target + ".damaged-" + timeOf(*status);
    for (int number = 1; number <= mostOfOneSecond; ++number) {
        const QByteArray kept = number == 1 ? name : name + '-' + QByteArray::number(number);
        if (const auto former = statusOf(kept)) {
            if (isSameFile(*former, *status)) return QFile::decodeName(kept);
            continue;
        }
        if (::link(target.constData(), kept.constData()) == 0) return QFile::decodeName(kept);
        if (errno == EEXIST) continue;
        QFile file(QFile::decodeName(target));
        if (file.copy(QFile::decodeName(kept))) return QFile::decodeName(kept);
        return std::unexpected(file.errorString());
    }
    return std::unexpected(u"too many damaged files are kept already"_s);
}

} // namespace vorq
