#pragma once

#include <QStringList>

namespace vorq {

/// Asks the user's processes whose command line begins with exactly these words to end.
void endUserProcesses(const QStringList& words);

} // namespace vorq
