#pragma once

#include "shell/look/StatusImage.h"

#include <QIcon>

class QPainter;

namespace vorq {

/// Draws an image of the status item into a square of 18 units, the origin at the top left.
void paintStatusImage(QPainter& painter, StatusImage image);

/// The same at the sizes that trays ask for. The colours stand out on light and on dark bars.
[[nodiscard]] QIcon statusIcon(StatusImage image);

} // namespace vorq
