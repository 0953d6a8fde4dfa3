#pragma once

#include "backend/account/AccountSession.h"
#include "backend/account/AccountSignIn.h"
#include "backend/account/PreferredModel.h"
#include "backend/account/PrivacyForm.h"
#include "backend/account/ProfileForm.h"
#include "backend/api/VorqAPIService.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/backend/ScriptedTransport.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedDefaults.h"

#include <QFile>

#include <gtest/gtest.h>

namespace vorq {

/// An account over a scripted network, in virtual time.
class AccountFixture : public testing::Test {
  protected:
    static QByteArray sessionJson(const QByteArray& token, const QByteArray& more = {}) {
        return R"({"signedIn":true,"email":"ada@example.org","token":")" + token + '"' + more + '}';
    }

    void storeSession(const QString& token, const QString& refreshToken = {}) {
        defaults.setString("vorq.session.token", token);
        defaults.setString("vorq.session.email", "ada@example.org");
        if (!refreshToken.isNull()) defaults.setString("vorq.session.refreshToken", refreshToken);
    }
    /// Signed in with the token "t1", without a refresh under way.
    void signIn() {
        storeSession("t1");
        account->restoreSession();
        storeSession("t1", "r1");
    }
    [[nodiscard]] QString stored(const QString& name) const {
        return defaults.string("vorq.session." + name).value_or(QStringLiteral("(none)"));
    }
    void storeAvatar(const QByteArray& image) {
        QFile file(VorqSessionStore(defaults, paths).profileImageURL());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(image);
    }
    /// As the program ends.
    void destroyAccount() {
        privacyForm.reset();
        profileForm.reset();
        starting.reset();
        account.reset();
    }
    void answerLast(int status, const QByteArray& body) {
        transport.last().respond(status, body);
        clock.settle();
    }

    ManualClock clock;
    ScriptedDefaults defaults;
    ScriptedAppPaths paths;
    ScriptedTransport transport{clock};
    VorqAPIService api{transport, [] { return QStringLiteral("http://h:1"); }};
    PreferredModel model{api, defaults};
    std::unique_ptr<AccountSession> account =
        std::make_unique<AccountSession>(api, defaults, paths, clock, model);
    std::unique_ptr<AccountSignIn> starting = std::make_unique<AccountSignIn>(*account, api, clock);
    std::unique_ptr<ProfileForm> profileForm = std::make_unique<ProfileForm>(*account, api);
    std::unique_ptr<PrivacyForm> privacyForm = std::make_unique<PrivacyForm>(*account, api);
};

} // namespace vorq
