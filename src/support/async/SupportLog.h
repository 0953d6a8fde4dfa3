#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(supportLog, "vorq.support", QtInfoMsg)

} // namespace vorq
