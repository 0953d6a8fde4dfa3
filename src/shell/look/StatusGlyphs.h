#pragma once

#include "shell/look/StatusImage.h"

#include <QIcon>

class QPainter;

namespace vorq {

/// Draws an image of the status item into a square of 18 units, the origin at the top left. The
/// drop, from 0 to 1, is how far it has fallen towards the lower edge.
void paintStatusImage(QPainter& painter, StatusImage image, double drop = 0);

/// The same at the sizes that trays ask for. The colours stand out on light and on dark bars.
[[nodiscard]] QIcon statusIcon(StatusImage image, double drop = 0);

} // namespace vorq
