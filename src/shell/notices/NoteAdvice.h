#pragma once

#include <QString>

namespace vorq {

/// What the menu says of the last text that was to become a note.
struct NoteAdvice {
    QString failure; ///< why it was not saved; "" if it was
    /// It was held back, since it reads like a secret, and waits to be saved or discarded.
    bool holdsText = false;

    bool operator==(const NoteAdvice&) const = default;
};

} // namespace vorq
