#include "platform/linux/LinuxPermissionProbe.h"
#include "platform/testing/ScriptedAccessibility.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class LinuxPermissionProbeTest : public testing::Test {
  protected:
    void add(const QString& name) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    QTemporaryDir folder;
    ScriptedAccessibility accessibility;
    LinuxPermissionProbe probe{accessibility, folder.path()};
};

TEST_F(LinuxPermissionProbeTest, TextCaptureIsGrantedWithTrust) {
    EXPECT_EQ(probe.textCapture(), PermissionState::Granted);
    accessibility.trusted = false;
    EXPECT_EQ(probe.textCapture(), PermissionState::Pending);
}

TEST_F(LinuxPermissionProbeTest, MicrophoneIsPendingWithoutADeviceToRecordFrom) {
    EXPECT_EQ(probe.microphone(), PermissionState::Pending);
    add("pcmC0D0p");
    add("controlC0");
    EXPECT_EQ(probe.microphone(), PermissionState::Pending);
}

TEST_F(LinuxPermissionProbeTest, MicrophoneIsGrantedWithADeviceToRecordFrom) {
    add("pcmC1D0c");
    EXPECT_EQ(probe.microphone(), PermissionState::Granted);
}

TEST_F(LinuxPermissionProbeTest, MicrophoneIsPendingWithoutASoundSystem) {
    const LinuxPermissionProbe without(accessibility, folder.filePath("none"));
    EXPECT_EQ(without.microphone(), PermissionState::Pending);
}

TEST_F(LinuxPermissionProbeTest, ScreenIsPendingWithoutAnXServer) {
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4242");
    EXPECT_EQ(probe.screen(), PermissionState::Pending);
    qputenv("DISPLAY", display);
}

TEST_F(LinuxPermissionProbeTest, NamesTheProgramAndItsFile) {
    EXPECT_EQ(probe.privacyListName(), "Vorq");
    EXPECT_EQ(probe.processPath(), QCoreApplication::applicationFilePath());
}

} // namespace
} // namespace vorq
