#pragma once

#include <QByteArrayView>
#include <QString>

namespace vorq {

/// Puts a file of mode 0600 with this content in the place of whatever stands at the path, at once
/// and only after it is on the disk; readers see the former content or the new one. False if that
/// failed; the former file is then as it was. A symbolic link is replaced, not followed.
bool replaceFile(const QString& path, QByteArrayView content);

} // namespace vorq
