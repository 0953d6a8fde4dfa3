#pragma once

#include "app/CommandLine.h"
#include "app/ReplyPrinter.h"
#include "app/Terminal.h"
#include "core/VorqAppState.h"

#include <QObject>

namespace vorq {

/// One turn of the conversation in a terminal: the reply to standard output block by block, an
/// error sentence to standard error.
class AskCommand final : public QObject {
    Q_OBJECT

  public:
    /// State and terminal must outlive the command.
    AskCommand(VorqAppState& state, Terminal& terminal);

    /// Begins the turn. The piped text counts as highlighted.
    void start(const AskArguments& arguments, const QString& pipedText);

    /// Stops the turn at once; finished() follows with the status told.
    void stop(int exitStatus);

  signals:
    /// The exit status: 0 with a reply, 1 after an error, 2 if there was nothing to ask.
    void finished(int exitStatus);

  private:
    void showStatus();
    void print(const QByteArray& bytes);
    void onStreamed(const QUuid& placeholder, const QString& text);
    void onTurnEnded(const QUuid& placeholder, TurnEnd end, const QString& sentence);
    void printReply(const QUuid& placeholder);
    void printFollowUp(const VorqFollowUp& followUp);
    void explainSignIn();
    void end(int exitStatus);

    VorqAppState& m_state;
    Terminal& m_terminal;
    ReplyPrinter m_printer;
    bool m_isEnded = false;
};

} // namespace vorq
