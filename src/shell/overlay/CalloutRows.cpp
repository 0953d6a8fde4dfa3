#include "shell/overlay/CalloutRows.h"

#include "shell/look/RoundedRows.h"

#include <cmath>

namespace vorq {
namespace {

// From the tip downwards: narrow at first, and as wide as the arrow where it meets the card.
int arrowWidth(QSize arrow, int row) {
    const double part = (row + 0.5) / arrow.height();
    return static_cast<int>(std::lround(arrow.width() * std::pow(part, 1.3)));
}

} // namespace

std::vector<QRect> calloutRows(const CalloutForm& form) {
    std::vector<QRect> card = roundedRows(form.card.size(), form.radius);
    for (QRect& row : card)
        row.translate(form.card.topLeft());
    std::vector<QRect> arrow;
    for (int row = 0; row < form.arrow.height(); ++row) {
        const int width = arrowWidth(form.arrow, row);
        const int left = static_cast<int>(std::lround(form.tipX - width / 2.0));
        const int y = form.pointsUp ? form.card.top() - form.arrow.height() + row
                                    : form.card.bottom() + form.arrow.height() - row;
        if (width > 0) arrow.emplace_back(left, y, width, 1);
    }
    if (form.pointsUp) {
        arrow.insert(arrow.end(), card.begin(), card.end());
        return arrow;
    }
    card.insert(card.end(), arrow.rbegin(), arrow.rend());
    return card;
}

} // namespace vorq
