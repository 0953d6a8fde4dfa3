#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(shellLog, "vorq.shell", QtInfoMsg)

} // namespace vorq
