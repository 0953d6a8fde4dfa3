#pragma once

#include "app/cli/AskFiles.h"
#include "app/cli/CommandLine.h"
#include "app/cli/ReplyPrinter.h"
#include "app/cli/Terminal.h"
#include "core/VorqAppState.h"

#include <QObject>

#include <expected>

namespace vorq {

/// One turn of the conversation in a terminal: the reply to standard output block by block, an
/// error sentence to standard error.
class AskCommand final : public QObject {
    Q_OBJECT

  public:
    /// State and terminal must outlive the command.
    AskCommand(VorqAppState& state, Terminal& terminal);

    /// What a turn begins with.
    struct Question {
        QString prompt;
        QString model;     ///< "" for the user's own choice
        QString pipedText; ///< counts as highlighted
        QList<PromptAttachment> attachments;
    };

    /// Reads the files and standard input; returns when it has them. Runs the event loop for the
    /// files.
    [[nodiscard]] static std::expected<Question, AskRefusal> read(const AskArguments& arguments,
                                                                  AttachmentReader& reader);

    void start(const Question& question);

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
    bool m_wasSignedIn = false;
    bool m_isEnded = false;
};

} // namespace vorq
