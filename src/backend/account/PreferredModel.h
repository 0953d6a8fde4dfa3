#pragma once

#include "support/async/TaskSlot.h"

#include <QObject>
#include <QString>

#include <functional>

namespace vorq {

class Defaults;
class VorqAPIService;
struct Session;

/// The model that the user prefers: kept in the settings, and with the account while signed in.
/// Main thread only.
class PreferredModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString preferredAIModelID READ preferredAIModelID NOTIFY preferredAIModelIDChanged)

  public:
    PreferredModel(VorqAPIService& api, Defaults& defaults, QObject* parent = nullptr);
    ~PreferredModel() override;

    /// A catalogue id; empty leaves the choice to the backend.
    [[nodiscard]] const QString& preferredAIModelID() const { return m_preferredAIModelID; }

    /// Where the account's token comes from; without one the choice stays on this machine.
    void setTokenSource(std::function<QString()> tokenSource);

    /// Reads the stored choice. One that the catalogue does not hold becomes empty.
    void restore();

    /// The user's own choice, which no session overrides from then on.
    Q_INVOKABLE void selectPreferredAIModel(const QString& id);

    /// Stores the id with the account, if someone is signed in. Ends in the background.
    void persistPreferredModel(const QString& id);

    void applyPreferredModelFromSession(const Session& session);

  Q_SIGNALS:
    void preferredAIModelIDChanged();

  private:
    void setPreferredAIModelID(const QString& id);

    VorqAPIService& m_api;
    Defaults& m_defaults;
    std::function<QString()> m_tokenSource;
    QString m_preferredAIModelID;
    TaskSlot m_sync;
};

} // namespace vorq
