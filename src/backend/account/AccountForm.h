#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class AccountSession;
class VorqAPIService;

/// What a page that changes the account shows of its saving. It ends with the session that it is
/// for. Main thread only.
class AccountForm : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY changed)
    Q_PROPERTY(QString error READ error NOTIFY changed)

  public:
    [[nodiscard]] bool isSaving() const { return m_isSaving; }
    /// Why the last attempt was refused or failed, as a sentence; "" for no reason.
    [[nodiscard]] const QString& error() const { return m_error; }

  Q_SIGNALS:
    void changed();

  protected:
    /// Both must outlive the form.
    AccountForm(AccountSession& account, VorqAPIService& api);

    [[nodiscard]] AccountSession& account() const { return m_account; }
    [[nodiscard]] VorqAPIService& api() const { return m_api; }
    /// Whether there is a session that the backend knows.
    [[nodiscard]] bool hasSession() const;

    void begin() { set(true, {}); }
    /// Shows the problem, "" for none. Gives whether there is none.
    bool end(const QString& problem);
    /// Shows the problem of an attempt that does not begin; one under way goes on. Gives false.
    bool refuse(const QString& problem);

  private:
    void set(bool isSaving, const QString& error);

    AccountSession& m_account;
    VorqAPIService& m_api;
    bool m_isSaving = false;
    QString m_error;
};

} // namespace vorq
