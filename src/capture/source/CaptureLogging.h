#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(captureLog, "vorq.capture", QtInfoMsg)

} // namespace vorq
