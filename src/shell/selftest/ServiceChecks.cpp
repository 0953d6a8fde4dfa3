#include "shell/selftest/ServiceChecks.h"

#include "backend/account/AccountSession.h"
#include "backend/api/VorqAPIService.h"
#include "platform/NotesBridge.h"

#include <QHostAddress>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <optional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration backendLimit = 5s;

// What a backend tells of itself to anybody.
struct BackendStatus {
    /// Its replies are made without a language model.
    bool isEmbedded = false;
};

std::optional<QJsonObject> objectIn(QByteArrayView json) {
    const QJsonDocument document = QJsonDocument::fromJson(json.toByteArray());
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

std::optional<BackendStatus> decodeStatus(QByteArrayView json) {
    const auto object = objectIn(json);
    if (!object) return BackendStatus();
    return BackendStatus{.isEmbedded = object->value("replies"_L1).toString() == "embedded"_L1};
}

bool isOnThisComputer(const QString& address) {
    const QString host = QUrl(address).host();
    return host == u"localhost" || QHostAddress(host).isLoopback();
}

// Nothing if it could not be reached at all. One that does not know the question has answered, too.
QCoro::Task<std::optional<BackendStatus>> statusOf(VorqAPIService& api, std::stop_token stop) {
    std::optional<BackendStatus> status;
    try {
        status = co_await api.request<BackendStatus>(u"/status"_s, "GET", std::nullopt, QString(),
                                                     backendLimit, decodeStatus, stop);
    } catch (const ServiceError& error) {
        const bool hasAnswered =
            error.status() || error.kind() != ServiceError::Kind::RequestFailed;
        if (hasAnswered) status = BackendStatus();
    }
    co_return status;
}

} // namespace

QCoro::Task<SelfCheck> NotesCheck::run(std::stop_token stop) {
    const NotesBridge::Reached notes = co_await m_notes.reach(std::move(stop));
    SelfCheck result;
    if (notes)
        result = ok({QT_TRANSLATE_NOOP("SelfTest", "Notes are kept in: %1."), {*notes}});
    else
        result =
            failed({QT_TRANSLATE_NOOP("SelfTest", "Notes cannot be kept. %1"), {notes.error()}},
                   {QT_TRANSLATE_NOOP("SelfTest", "Install the package gnote, or choose a "
                                                  "folder that you may write in the settings "
                                                  "(vorq.notes.folder).")});
    co_return result;
}

QCoro::Task<SelfCheck> BackendCheck::run(std::stop_token stop) {
    const QString address = m_api.baseURL();
    const bool isLocal = isOnThisComputer(address);
    const auto status = co_await statusOf(m_api, std::move(stop));
    SelfCheck result;
    if (status)
        result = ok(isLocal ? SelfTestText{QT_TRANSLATE_NOOP(
                                  "SelfTest", "The backend on this computer answers.")}
                            : SelfTestText{QT_TRANSLATE_NOOP("SelfTest", "The backend answers.")});
    else if (isLocal)
        result =
            failed({QT_TRANSLATE_NOOP("SelfTest", "The backend on this computer does not answer.")},
                   {QT_TRANSLATE_NOOP("SelfTest", "Start it: %1"), {u"vorq enable-backend"_s}});
    else
        result = failed(
            {QT_TRANSLATE_NOOP("SelfTest", "The backend does not answer.")},
            {QT_TRANSLATE_NOOP("SelfTest", "Look whether this computer is connected, and whether "
                                           "VORQ_API_BASE_URL is right.")});
    result.details = {address};
    co_return result;
}

QCoro::Task<SelfCheck> AccountCheck::run(std::stop_token) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "Somebody is signed in.")});
    if (!m_account.signedIn())
        result = failed({QT_TRANSLATE_NOOP("SelfTest", "Nobody is signed in.")},
                        {QT_TRANSLATE_NOOP("SelfTest", "To sign in, run: %1"),
                         {u"vorq open \"$(vorq-gateway handoff)\""_s}});
    co_return result;
}

QCoro::Task<SelfCheck> ProviderCheck::run(std::stop_token stop) {
    const auto status = co_await statusOf(m_api, stop);
    SelfCheck result;
    if (!status) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "The backend does not answer.")});
    } else if (status->isEmbedded) {
        result = warning(
            {QT_TRANSLATE_NOOP("SelfTest", "No language model is connected: replies are made of "
                                           "the words of the text itself.")},
            {QT_TRANSLATE_NOOP("SelfTest", "Connect one on the page %1 of the backend."),
             {u"/admin.html"_s}});
    } else if (!m_account.signedIn()) {
        result = skipped({QT_TRANSLATE_NOOP("SelfTest", "Nobody is signed in, so the language "
                                                        "model was not asked.")});
    } else {
        result = co_await ask(std::move(stop));
    }
    co_return result;
}

QCoro::Task<SelfCheck> ProviderCheck::ask(std::stop_token stop) {
    SelfCheck result = ok({QT_TRANSLATE_NOOP("SelfTest", "The language model answers.")});
    const SelfTestText failure{
        QT_TRANSLATE_NOOP("SelfTest", "The language model does not answer.")};
    const SelfTestText advice{
        QT_TRANSLATE_NOOP("SelfTest", "Test the connection on the page %1 of the backend."),
        {u"/admin.html"_s}};
    PromptRequest request;
    request.prompt = u"Answer with the word OK."_s;
    request.skipUserPreferences = true;
    request.preferredModel = m_account.preferredModelForAIRequest();
    try {
        const auto operation = [this, request, stop](const QString& token) {
            return m_api.prompt(token, request, stop);
        };
        (void)co_await m_account.tokens().withFreshSessionToken(operation, stop);
    } catch (const BackendError& error) {
        result = failed(failure, advice);
        result.details = {error.message()};
    }
    co_return result;
}

} // namespace vorq
