#include "backend/account/ModelCatalogue.h"
#include "capture/attachments/PromptAttachment.h"
#include "conformance/Ops.h"
#include "conversation/PromptCommands.h"
#include "library/records/StudySource.h"
#include "panel/PanelRequests.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace vorq::conformance {
namespace {

QList<PromptAttachment> attachmentsOf(const QJsonObject& in) {
    QList<PromptAttachment> attachments;
    for (const QJsonValue& value : arrayOf(in, "attachments")) {
        const QJsonObject object = value.toObject();
        PromptAttachment attachment;
        attachment.fileName = stringOf(object, "fileName");
        attachment.textContent = optionalStringOf(object, "textContent");
        attachment.imageDataURL = optionalStringOf(object, "imageDataURL");
        if (const auto note = optionalStringOf(object, "noteID")) attachment.noteID = QUuid(*note);
        attachment.isDeepenSelection = object["isDeepenSelection"].toBool();
        attachments += attachment;
    }
    return attachments;
}

std::vector<VorqMessage> messagesOf(const QJsonObject& in) {
    std::vector<VorqMessage> messages;
    for (const QJsonValue& value : arrayOf(in, "messages")) {
        const QJsonObject object = value.toObject();
        VorqMessage message;
        message.role =
            stringOf(object, "role") == u"user" ? MessageRole::User : MessageRole::Assistant;
        message.text = stringOf(object, "text");
        message.isWorking = object["isWorking"].toBool();
        messages.push_back(message);
    }
    return messages;
}

QJsonValue nullable(const std::optional<QString>& text) {
    return text ? QJsonValue(*text) : QJsonValue(QJsonValue::Null);
}

QJsonValue sent(PanelRequest request, const QJsonObject& in) {
    request.body.preferredModel =
        modelForRequest(boolOf(in, "signedIn"), stringOf(in, "preferredModelID"));
    return QJsonObject{{"path", PromptRequest::path.toString()},
                       {"timeout", qint64{request.body.timeout().count()}},
                       {"body", parsed(encode(request.body))}};
}

QJsonValue promptRequest(const QJsonObject& in) {
    PanelPromptContext context;
    context.prompt = stringOf(in, "prompt");
    context.attachments = attachmentsOf(in);
    context.highlightedText = stringOf(in, "highlightedText");
    if (in["studyNote"].isObject()) {
        const QJsonObject note = objectOf(in, "studyNote");
        context.studySource = studySource(stringOf(note, "text"), stringOf(note, "thoughts"));
        context.isStudyingNote = true;
    }
    const std::vector<VorqMessage> messages = messagesOf(in);
    context.messages = messages;
    return sent(panelPromptRequest(context), in);
}

QJsonValue deepenRequest(const QJsonObject& in) {
    return sent(
        panelDeepenRequest(stringOf(in, "excerpt"), stringOf(in, "userPrompt"), messagesOf(in)),
        in);
}

QString nameOf(PromptRoute route) {
    switch (route) {
    case PromptRoute::SaveChat:
        return u"saveChat"_s;
    case PromptRoute::Library:
        return u"library"_s;
    case PromptRoute::RecallNote:
        return u"recallNote"_s;
    case PromptRoute::SaveResearch:
        return u"saveResearch"_s;
    case PromptRoute::Study:
        return u"study"_s;
    case PromptRoute::Backend:
        return u"backend"_s;
    }
    return {};
}

} // namespace

void addCommandOps(Ops& ops) {
    ops["normalizedCommand"] = [](const QJsonObject& in) -> QJsonValue {
        return normalizedCommand(stringOf(in, "text"));
    };
    ops["route"] = [](const QJsonObject& in) -> QJsonValue {
        return nameOf(route(stringOf(in, "text")));
    };
    ops["isHubAIQuizRequest"] = [](const QJsonObject& in) -> QJsonValue {
        return isHubAIQuizRequest(stringOf(in, "text"));
    };
    ops["quizFocus"] = [](const QJsonObject& in) -> QJsonValue {
        return quizFocus(stringOf(in, "text"));
    };
    ops["submitBubble"] = [](const QJsonObject& in) {
        return nullable(submitBubble(stringOf(in, "prompt"), attachmentsOf(in)));
    };
    ops["deepenBubble"] = [](const QJsonObject& in) {
        return nullable(deepenBubble(stringOf(in, "excerpt"), stringOf(in, "userPrompt")));
    };
    ops["composerDisplayNames"] = [](const QJsonObject& in) -> QJsonValue {
        return QJsonArray::fromStringList(composerDisplayNames(attachmentsOf(in)));
    };
    ops["panelPromptRequest"] = promptRequest;
    ops["panelDeepenRequest"] = deepenRequest;
}

} // namespace vorq::conformance
