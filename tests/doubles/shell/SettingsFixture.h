#pragma once

#include "core/VorqAppState.h"
#include "doubles/backend/ScriptedTransport.h"
#include "doubles/capture/ScriptedCapture.h"
#include "platform/NotesBridge.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedAppPaths.h"
#include "platform/testing/ScriptedDefaults.h"
#include "platform/testing/ScriptedDocumentTools.h"
#include "shell/settings/SettingsViewModel.h"

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace vorq {

/// The settings of a user who is signed in, over a scripted backend.
class SettingsFixture : public testing::Test {
  protected:
    using Pane = SettingsNavigation::SettingsPane;

    SettingsFixture() {
        defaults.apply({{"vorq.session.token", "t1"},
                        {"vorq.session.email", "ada@example.org"},
                        {"vorq.session.firstName", "Ada"},
                        {"vorq.session.lastName", "Lovelace"},
                        {"vorq.session.username", "ada"}});
        state = std::make_unique<VorqAppState>(
            VorqAppState::Platform{clock, defaults, paths, transport, capture, notes});
        settings = std::make_unique<SettingsViewModel>(*state, nullptr, tools);
    }
    ~SettingsFixture() override {
        settings.reset();
        state.reset();
        clock.settle();
    }

    [[nodiscard]] SettingsNavigation& navigation() { return *settings->navigation(); }
    [[nodiscard]] ProfileEdit& profile() { return *settings->profile(); }
    [[nodiscard]] PrivacyEdit& privacy() { return *settings->privacy(); }

    void answer(int status, const QByteArray& body) {
        transport.last().respond(status, body);
        clock.settle();
    }
    void answerSaved(const QByteArray& more = {}) {
        answer(200, R"({"signedIn":true,"email":"ada@example.org","token":"t1")" + more + '}');
    }
    void expire() {
        state->account().markSessionExpired();
        clock.settle();
    }
    void signInAs(const QString& email) {
        Session session;
        session.signedIn = true;
        session.email = email;
        session.token = QStringLiteral("t2");
        session.firstName = QStringLiteral("Ada");
        session.lastName = QStringLiteral("Lovelace");
        state->account().beginSession(session);
        clock.settle();
    }
    static QByteArray jpeg(const QColor& color) {
        QImage image(8, 8, QImage::Format_RGB32);
        image.fill(color);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "JPEG");
        return bytes;
    }
    [[nodiscard]] QString putFile(const QString& name, const QByteArray& bytes) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    void choose(const QString& path) {
        profile().usePicture(QUrl::fromLocalFile(path));
        EXPECT_TRUE(QTest::qWaitFor([this] { return !profile().isReadingPicture(); }));
    }

    QTemporaryDir folder;
    ManualClock clock;
    ScriptedDefaults defaults;
    ScriptedAppPaths paths;
    ScriptedTransport transport{clock};
    ScriptedCapture capture;
    NoNotesBridge notes;
    std::shared_ptr<ScriptedDocumentTools> tools = std::make_shared<ScriptedDocumentTools>();
    std::unique_ptr<VorqAppState> state;
    std::unique_ptr<SettingsViewModel> settings;
};

} // namespace vorq
