#pragma once

#include <QByteArray>

namespace vorq {

/// The members that can be read of a damaged JSON object, as an object that is whole. One whose
/// value is damaged itself is left out; of several with one key the last counts.
[[nodiscard]] QByteArray readablePart(const QByteArray& damaged);

/// Whether a damaged JSON object may have held a member with this key, whether or not it can be
/// read: the object is cut short, or the key stands somewhere in it.
[[nodiscard]] bool mayHaveHeld(const QByteArray& damaged, const QByteArray& key);

} // namespace vorq
