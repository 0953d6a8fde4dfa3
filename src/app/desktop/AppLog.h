#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(appLog, "vorq.app", QtInfoMsg)

} // namespace vorq
