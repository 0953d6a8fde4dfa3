#include "app/cli/OpenCommand.h"

#include "backend/account/SignInUrl.h"
#include "backend/http/Errors.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace vorq {
OpenCommand::OpenCommand(VorqAppState& state, Terminal& terminal)
    : m_state(state), m_terminal(terminal) {}

void OpenCommand::start(const QString& url) {
    const std::optional<QString> code = SignInUrl::handoffCode(QUrl(url));
    if (!code) {
        m_terminal.complain(u"This is no link that Vorq can open: %1"_s.arg(url));
        return end(2);
    }
    m_task.restart([self = QPointer(this), code = *code](std::stop_token stop) {
        return signIn(self, code, std::move(stop));
    });
}

void OpenCommand::stop(int exitStatus) {
    m_task.cancel();
    end(exitStatus);
}

QCoro::Task<> OpenCommand::signIn(QPointer<OpenCommand> self, QString code, std::stop_token stop) {
    QString failure;
    bool isSignedIn = false;
    try {
        isSignedIn = co_await self->m_state.signIn().exchangeHandoff(code, stop);
    } catch (const BackendError& error) {
        failure = error.message();
    }
    if (!self || stop.stop_requested()) co_return;
    if (isSignedIn) {
        const QString name = self->m_state.account().profile().displayName();
        const bool isSaid = self->m_terminal.print(u"Signed in as %1.\n"_s.arg(name).toUtf8());
        co_return self->end(isSaid ? 0 : 1);
    }
    self->m_terminal.complain(failure.isEmpty() ? u"Sign in failed. Try again."_s : failure);
    self->end(1);
}

void OpenCommand::end(int exitStatus) {
    if (m_isEnded) return;
    m_isEnded = true;
    emit finished(exitStatus);
}

} // namespace vorq
