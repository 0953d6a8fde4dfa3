#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

/// A question or a word that the user answers before anything else happens with it.
struct Alert {
    QString message;
    QString informativeText;
    /// From the one that does what the alert is about to the one that does nothing. The latter is
    /// what Return and Escape take unless the user chooses: nothing is done by accident.
    QStringList buttons;

    bool operator==(const Alert&) const = default;
};

} // namespace vorq
