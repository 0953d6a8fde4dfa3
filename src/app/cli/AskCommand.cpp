#include "app/cli/AskCommand.h"

#include "support/text/Text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QStringList picturesLeftOut(const QList<PromptAttachment>& attachments) {
    QStringList names;
    for (const PromptAttachment& attachment : attachments)
        if (attachment.imageDataURL) names += attachment.fileName;
    return names.sliced(std::min<qsizetype>(names.size(), 1));
}

} // namespace

AskCommand::AskCommand(VorqAppState& state, Terminal& terminal)
    : m_state(state), m_terminal(terminal) {
    PanelConversation& panel = state.panel();
    connect(&panel.workStatus(), &WorkStatus::changed, this, &AskCommand::showStatus);
    connect(&panel, &PanelConversation::replyStreamed, this, &AskCommand::onStreamed);
    // Queued, so that the reply is in the conversation by then.
    connect(&panel, &PanelConversation::turnEnded, this, &AskCommand::onTurnEnded,
            Qt::QueuedConnection);
}

std::expected<AskCommand::Question, AskRefusal> AskCommand::read(const AskArguments& arguments,
                                                                 AttachmentReader& reader) {
    auto attachments = readAskedFiles(arguments.files, reader);
    if (!attachments) return std::unexpected(attachments.error());
    Question question{arguments.prompt, arguments.model, {}, *std::move(attachments)};
    auto piped = readPipedInput(u"can be sent"_s);
    if (!piped) return std::unexpected(AskRefusal{1, piped.error()});
    question.pipedText = *std::move(piped);
    return question;
}

void AskCommand::start(const Question& question) {
    PanelConversation& panel = m_state.panel();
    const QString highlighted = trimmed(question.pipedText).toString();
    const bool hasPrompt = !trimmed(question.prompt).isEmpty() || !question.attachments.isEmpty();
    if (!hasPrompt && highlighted.isEmpty()) {
        m_terminal.complain(u"There is nothing to ask: give a prompt, a file or "
                            "text on standard input."_s);
        return end(2);
    }
    m_wasSignedIn = m_state.account().signedIn();
    if (!question.model.isEmpty()) panel.setModelForNow(question.model);
    panel.setHighlightedText(highlighted);
    if (hasPrompt)
        panel.submitToBackend(question.prompt, question.attachments);
    else
        panel.typeHighlightAndAnalyze(highlighted);
    for (const QString& name : picturesLeftOut(question.attachments))
        m_terminal.complain(u"%1 is not sent: one picture goes along with a prompt."_s.arg(name));
    showStatus();
}

void AskCommand::stop(int exitStatus) {
    m_state.panel().stopPanelResponse();
    if (m_printer.hasPrinted()) print("\n");
    end(exitStatus);
}

void AskCommand::showStatus() {
    // Once text comes in the conversation shows no status; here the last one stands until a block
    // is whole.
    if (m_state.panel().messages().hasWorking() && !m_printer.hasPrinted() && !m_isEnded)
        m_terminal.showStatus(m_state.panel().workStatus().label());
}

void AskCommand::print(const QByteArray& bytes) {
    if (!m_isEnded && !m_terminal.print(bytes)) end(1);
}

void AskCommand::onStreamed(const QUuid&, const QString& text) {
    print(m_printer.grow(text));
}

void AskCommand::onTurnEnded(const QUuid& placeholder, TurnEnd turnEnd, const QString& sentence) {
    if (m_isEnded) return;
    if (turnEnd == TurnEnd::Replied) {
        printReply(placeholder);
        return end(0);
    }
    if (m_printer.hasPrinted()) print("\n");
    if (turnEnd == TurnEnd::SignedOut) {
        m_terminal.complain(m_wasSignedIn ? m_state.signIn().authError()
                                          : u"You are not signed in."_s);
        explainSignIn();
    } else {
        m_terminal.complain(sentence);
    }
    end(1);
}

void AskCommand::printReply(const QUuid& placeholder) {
    const VorqMessage* message = m_state.panel().messages().find(placeholder);
    if (!message) return;
    // The panel would still reveal the reply at its pace; a terminal need not wait for it.
    print(m_printer.finish(message->typingFullText.value_or(message->text)));
    if (message->followUp && m_terminal.isInteractive()) printFollowUp(*message->followUp);
}

void AskCommand::printFollowUp(const VorqFollowUp& followUp) {
    QString text = u'\n' + followUp.question.simplified() + u'\n';
    for (const QString& label : followUp.labels)
        text += u"  › "_s + label.simplified() + u'\n';
    print(text.toUtf8());
}

void AskCommand::explainSignIn() {
    m_terminal.complain(u"To sign in on this computer: "
                        "vorq open \"$(vorq-gateway handoff)\""_s);
}

void AskCommand::end(int exitStatus) {
    if (m_isEnded) return;
    m_isEnded = true;
    m_terminal.showStatus({});
    emit finished(exitStatus);
}

} // namespace vorq
