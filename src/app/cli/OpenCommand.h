#pragma once

#include "app/cli/Terminal.h"
#include "core/VorqAppState.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

namespace vorq {

/// Takes a vorq:// link from the command line and says what came of it.
class OpenCommand final : public QObject {
    Q_OBJECT

  public:
    /// State and terminal must outlive the command.
    OpenCommand(VorqAppState& state, Terminal& terminal);

    void start(const QString& url);

    /// Gives up at once.
    void stop(int exitStatus);

  signals:
    void finished(int exitStatus);

  private:
    static QCoro::Task<> signIn(QPointer<OpenCommand> self, QString code, std::stop_token stop);
    void end(int exitStatus);

    VorqAppState& m_state;
    Terminal& m_terminal;
    TaskSlot m_task;
    bool m_isEnded = false;
};

} // namespace vorq
