#include "app/instance/LinkOutcomes.h"

#include "backend/account/SignInUrl.h"
#include "support/text/Text.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

constexpr std::size_t mostKept = 8;

} // namespace

LinkOutcomes::LinkOutcomes(const QDBusConnection& bus, QObject* object)
    : QDBusAbstractAdaptor(object), m_bus(bus) {}

void LinkOutcomes::began(const QString& code) {
    const QString sent = trimmed(code).toString();
    if (sent.isEmpty()) return;
    SignIn* signIn = find(sent);
    if (signIn == nullptr) {
        signIn = &m_signIns.emplace_back();
        signIn->code = sent;
    }
    ++signIn->underWay;
    if (m_signIns.size() <= mostKept) return;
    const auto oldest = std::ranges::find(m_signIns, 0, &SignIn::underWay);
    if (oldest != m_signIns.end()) m_signIns.erase(oldest);
}

void LinkOutcomes::ended(const QString& code, bool hasSucceeded, const QString& sentence) {
    SignIn* signIn = find(code);
    if (signIn == nullptr) return;
    signIn->underWay = std::max(signIn->underWay - 1, 0);
    // A link that was opened twice fails once, in whichever order, which does not count.
    if (signIn->hasSucceeded) return;
    signIn->hasSucceeded = hasSucceeded;
    signIn->sentence = sentence;
    if (!hasSucceeded && signIn->underWay > 0) return;
    for (const QDBusMessage& question : std::exchange(signIn->waiting, {}))
        answer(question, *signIn);
}

QString LinkOutcomes::Outcome(const QString& url, const QDBusMessage& message) {
    const auto code = SignInUrl::handoffCode(QUrl(url));
    SignIn* signIn = code ? find(trimmed(*code).toString()) : nullptr;
    if (signIn == nullptr) return {};
    message.setDelayedReply(true);
    if (signIn->hasSucceeded || signIn->underWay == 0)
        answer(message, *signIn);
    else
        signIn->waiting += message;
    return {};
}

LinkOutcomes::SignIn* LinkOutcomes::find(const QString& code) {
    const auto found = std::ranges::find(m_signIns, code, &SignIn::code);
    return found == m_signIns.end() ? nullptr : &*found;
}

void LinkOutcomes::answer(const QDBusMessage& question, const SignIn& signIn) const {
    m_bus.send(signIn.hasSucceeded ? question.createReply(signIn.sentence)
                                   : question.createErrorReply(failed, signIn.sentence));
}

} // namespace vorq
