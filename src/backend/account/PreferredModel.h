#pragma once

#include "backend/account/OfferedModels.h"
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

    /// An id of the catalogue or of what the backend offers; empty leaves the choice to it.
    [[nodiscard]] const QString& preferredAIModelID() const { return m_preferredAIModelID; }

    [[nodiscard]] const OfferedModels& offered() const { return m_offered; }
    /// Asks the backend what it offers, in the background.
    void refreshOffered();
    void forgetOffered() { m_offered.forget(); }

    /// Where the account's token comes from; without one the choice stays on this machine.
    void setTokenSource(std::function<QString()> tokenSource);

    /// Reads the stored choice. One that is not known becomes empty; of one that was offered it is
    /// not known as long as no offer is.
    void restore();

    /// The user's own choice, which no session overrides from then on.
    Q_INVOKABLE void selectPreferredAIModel(const QString& id);

    /// Stores the id with the account, if someone is signed in. Ends in the background.
    void persistPreferredModel(const QString& id);

    void applyPreferredModelFromSession(const Session& session);

  Q_SIGNALS:
    void preferredAIModelIDChanged();

  private:
    [[nodiscard]] bool isKnown(const QString& id) const;
    void setPreferredAIModelID(const QString& id);

    VorqAPIService& m_api;
    Defaults& m_defaults;
    OfferedModels m_offered;
    std::function<QString()> m_tokenSource;
    QString m_preferredAIModelID;
    TaskSlot m_sync;
};

} // namespace vorq
