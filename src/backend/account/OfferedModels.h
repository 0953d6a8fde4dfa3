#pragma once

#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QStringList>

#include <functional>
#include <stop_token>

namespace vorq {

class Defaults;
class VorqAPIService;

/// The models that the backend offers beside those of the catalogue, as it last told. Main thread
/// only.
class OfferedModels final : public QObject {
    Q_OBJECT

  public:
    /// Both must outlive this object.
    OfferedModels(VorqAPIService& api, Defaults& defaults);

    [[nodiscard]] const QStringList& ids() const { return m_ids; }
    [[nodiscard]] bool contains(const QString& id) const { return m_ids.contains(id); }

    /// Reads what was told before.
    void restore();

    /// Asks the backend as who the token is of. A failure leaves what is known: a backend without
    /// such an answer is as good as any. Does nothing while it is under way, or without a token.
    void refresh(const QString& token);

    /// They were those of an account that is left.
    void forget();

  signals:
    void changed();

  private:
    static QCoro::Task<> run(OfferedModels* self, QString token, std::stop_token stop);
    void set(const QStringList& ids);

    VorqAPIService& m_api;
    Defaults& m_defaults;
    QStringList m_ids;
    TaskSlot m_task;
};

} // namespace vorq
