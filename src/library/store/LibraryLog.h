#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(libraryLog, "vorq.library", QtInfoMsg)

} // namespace vorq
