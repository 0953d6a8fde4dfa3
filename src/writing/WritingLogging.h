#pragma once

#include <QLoggingCategory>

namespace vorq {

inline Q_LOGGING_CATEGORY(writingLog, "vorq.writing", QtInfoMsg)

} // namespace vorq
