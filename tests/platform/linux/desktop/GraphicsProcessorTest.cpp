#include "platform/linux/desktop/GraphicsProcessor.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class GraphicsProcessorTest : public testing::Test {
  protected:
    void write(const QString& path) {
        const QString whole = m_devices.filePath(path);
        ASSERT_TRUE(QDir().mkpath(whole.section('/', 0, -2)));
        ASSERT_TRUE(QFile(whole).open(QIODevice::WriteOnly));
    }

    [[nodiscard]] bool isThere() const { return hasGraphicsProcessor(m_devices.path()); }

    QTemporaryDir m_devices;
};

TEST_F(GraphicsProcessorTest, WithoutDevicesThereIsNone) {
    EXPECT_FALSE(isThere());
    EXPECT_FALSE(hasGraphicsProcessor(m_devices.filePath("nowhere")));
}

TEST_F(GraphicsProcessorTest, IsThereWithARenderNode) {
    write("dri/renderD129");
    EXPECT_TRUE(isThere());
}

TEST_F(GraphicsProcessorTest, IsThereWithTheDriverOfNvidia) {
    write("nvidiactl");
    EXPECT_TRUE(isThere());
}

// A screen alone, as of a virtual machine.
TEST_F(GraphicsProcessorTest, ACardThatOnlyShowsIsNone) {
    write("dri/card0");
    write("dri/by-path/pci-0000:00:02.0-render");
    EXPECT_FALSE(isThere());
}

TEST_F(GraphicsProcessorTest, ANodeThatCannotBeOpenedIsNone) {
    write("dri/card0");
    ASSERT_TRUE(QFile::link("/nonexistent", m_devices.filePath("dri/renderD128")));
    ASSERT_TRUE(QFile::link("/nonexistent", m_devices.filePath("nvidiactl")));
    EXPECT_FALSE(isThere());
}

TEST_F(GraphicsProcessorTest, ADeviceIsSeen) {
    ASSERT_TRUE(QDir(m_devices.path()).mkdir("dri"));
    ASSERT_TRUE(QFile::link("/dev/null", m_devices.filePath("dri/renderD128")));
    EXPECT_TRUE(isThere());
}

} // namespace
} // namespace vorq
