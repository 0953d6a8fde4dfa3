#pragma once

#include <QString>
#include <QStringView>

namespace vorq {

/// A reply as it is read aloud: its blocks line by line, without the marks of Markdown. Items keep
/// their bullets and numbers, the cells of a row are parted by commas. Linear; any thread.
[[nodiscard]] QString spokenReply(QStringView reply);

} // namespace vorq
