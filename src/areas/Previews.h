#pragma once

#include "model/Preview.h"

#include <QObject>
#include <QString>

#include <expected>
#include <set>

namespace vorq {

class Defaults;

/// The switches of what is closed in this release: all off, unless the user has opened one for good
/// or for this run. Main thread only.
class Previews final : public QObject {
    Q_OBJECT

  public:
    /// Where a switch is stored: "vorq.preview.watch" and the like, a truth value.
    [[nodiscard]] static QString keyOf(Preview preview);

    /// The defaults must outlive this object.
    explicit Previews(Defaults& defaults) : m_defaults(defaults) {}

    [[nodiscard]] bool isOn(Preview preview) const;

    /// Opens it until the program ends or it is switched; nothing is stored.
    void openForThisRun(Preview preview);

    /// Switches it for good, in this run as well. The error is a sentence on why the settings do
    /// not keep it; nothing is switched then.
    std::expected<void, QString> set(Preview preview, bool isOn);

  signals:
    /// It is on or off, other than before.
    void changed(vorq::Preview preview);

  private:
    Defaults& m_defaults;
    std::set<Preview> m_openForThisRun;
};

} // namespace vorq
