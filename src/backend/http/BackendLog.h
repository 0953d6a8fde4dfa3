#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(backendLog, "vorq.backend", QtInfoMsg)

} // namespace vorq
