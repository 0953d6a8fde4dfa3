#include "platform/linux/atspi/AtSpiWindowWatch.h"

#include "doubles/platform/PrivateBus.h"
#include "doubles/platform/ScriptedAccessibleTree.h"

#include <QDBusPendingCallWatcher>
#include <QTest>

#include <gmock/gmock.h>

#include <array>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::uint32_t active = 1U << 1U;

const AtSpiRef editor{":1.1", "/window/editor"};
const AtSpiRef browser{":1.2", "/window/browser"};

TEST(AtSpiActiveWindowsTest, TheLatestIsInFront) {
    AtSpiActiveWindows windows;
    EXPECT_EQ(windows.front(), std::nullopt);
    windows.activated(editor, 7);
    windows.activated(browser, 8);
    EXPECT_EQ(windows.front(), 8);
    windows.deactivated(browser);
    EXPECT_EQ(windows.front(), 7);
    windows.deactivated(editor);
    EXPECT_EQ(windows.front(), std::nullopt);
}

TEST(AtSpiActiveWindowsTest, TellingOfItTwiceMakesAWindowNoLater) {
    AtSpiActiveWindows windows;
    windows.activated(editor, 7);
    windows.activated(browser, 8);
    windows.activated(editor, 7);
    EXPECT_EQ(windows.front(), 8);
}

TEST(AtSpiActiveWindowsTest, AnApplicationThatIsGoneHasNone) {
    AtSpiActiveWindows windows;
    windows.activated(editor, 7);
    EXPECT_TRUE(windows.hasWindowOf(editor.service));
    windows.forget(editor.service);
    EXPECT_FALSE(windows.hasWindowOf(editor.service));
    EXPECT_EQ(windows.front(), std::nullopt);
}

// An application of two windows, on a bus whose registry it is as well.
class AtSpiWindowWatchTest : public testing::Test {
  protected:
    AtSpiWindowWatchTest() {
        m_tree.elements["/org/a11y/atspi/accessible/root"].children = {"/window/1", "/window/2"};
        m_tree.elements["/window/1"] = {};
        m_tree.elements["/window/2"] = {};
        m_server.registerVirtualObject("/", &m_tree, QDBusConnection::SubPath);
        m_server.registerService("org.a11y.atspi.Registry");
    }

    void begin(std::int32_t own = 0) {
        m_watch = std::make_unique<AtSpiWindowWatch>(m_client, own);
        m_watch->begin();
        settle();
    }

    void setActive(const QString& window, bool isActive) {
        m_tree.elements[window].states = isActive ? active : 0;
    }

    void send(const QString& path, const char* kind, const char* event,
              const QVariantList& arguments = {}) {
        QDBusMessage signal = QDBusMessage::createSignal(path, u"org.a11y.atspi.Event."_s + kind,
                                                         QString::fromLatin1(event));
        signal.setArguments(arguments);
        m_server.send(signal);
    }

    void tell(const QString& path, const char* kind, const char* event,
              const QVariantList& arguments = {}) {
        send(path, kind, event, arguments);
        settle();
    }

    // Until all is heard that was told, and answered that is asked.
    void settle() {
        const QDBusPendingCall fence = m_client.asyncCall(QDBusMessage::createMethodCall(
            m_server.baseService(), "/fence", "org.a11y.atspi.Accessible", "GetRole"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return fence.isFinished() && !isAsking(); }, 10'000));
    }

    [[nodiscard]] bool isAsking() const {
        return !m_watch->findChildren<QDBusPendingCallWatcher*>().isEmpty();
    }

    [[nodiscard]] std::optional<std::int32_t> front() const { return m_watch->front(); }

    const std::int32_t m_application = ::getpid();
    PrivateBus m_bus;
    ScriptedAccessibleTree m_tree{m_bus.address()};
    QDBusConnection m_server = m_bus.connection("window-application");
    QDBusConnection m_client = m_bus.connection("window-watch");
    std::unique_ptr<AtSpiWindowWatch> m_watch;
};

TEST_F(AtSpiWindowWatchTest, FindsTheWindowThatWasActiveBefore) {
    setActive("/window/2", true);
    begin();
    EXPECT_EQ(front(), m_application);
}

TEST_F(AtSpiWindowWatchTest, KnowsNobodyWhereNoWindowIsActive) {
    begin();
    EXPECT_EQ(front(), std::nullopt);
}

TEST_F(AtSpiWindowWatchTest, LeavesOutItsOwnProcess) {
    setActive("/window/1", true);
    begin(m_application);
    EXPECT_EQ(front(), std::nullopt);
    tell("/window/1", "Window", "Activate");
    EXPECT_EQ(front(), std::nullopt);
    EXPECT_FALSE(m_tree.calls().contains("/window/1.GetState"));
}

// As the kernel calls the process of the test, which is the application here.
class ProcessName {
  public:
    explicit ProcessName(const char* name) {
        ::prctl(PR_GET_NAME, m_former.data());
        ::prctl(PR_SET_NAME, name);
    }
    ProcessName(const ProcessName&) = delete;
    ProcessName& operator=(const ProcessName&) = delete;
    ~ProcessName() { ::prctl(PR_SET_NAME, m_former.data()); }

  private:
    std::array<char, 16> m_former{};
};

TEST_F(AtSpiWindowWatchTest, LeavesOutTheShellOfTheDesktop) {
    setActive("/window/1", true);
    {
        const ProcessName name("gnome-shell");
        begin();
        EXPECT_EQ(front(), std::nullopt);
        tell("/window/1", "Window", "Activate");
        EXPECT_EQ(front(), std::nullopt);
    }
    const ProcessName name("gnome-editor");
    begin();
    EXPECT_EQ(front(), m_application);
}

TEST_F(AtSpiWindowWatchTest, FollowsTheEventsOfWindows) {
    begin();
    setActive("/window/1", true);
    tell("/window/1", "Window", "Activate");
    EXPECT_EQ(front(), m_application);
    tell("/window/1", "Window", "Deactivate");
    EXPECT_EQ(front(), std::nullopt);
}

TEST_F(AtSpiWindowWatchTest, FollowsTheStateWhereThatIsAllThatIsTold) {
    begin();
    setActive("/window/1", true);
    tell("/window/1", "Object", "StateChanged", {QString("active"), 1, 0});
    EXPECT_EQ(front(), m_application);
    tell("/window/1", "Object", "StateChanged", {QString("active"), 0, 0});
    EXPECT_EQ(front(), std::nullopt);
}

TEST_F(AtSpiWindowWatchTest, BelievesNoEventThatTheWindowDenies) {
    begin();
    tell("/window/1", "Window", "Activate");
    EXPECT_EQ(front(), std::nullopt);
}

TEST_F(AtSpiWindowWatchTest, LooksForTheWindowOfAnElementThatGotTheFocus) {
    begin();
    setActive("/window/2", true);
    tell("/text", "Object", "StateChanged", {QString("focused"), 1, 0});
    EXPECT_EQ(front(), m_application);
}

TEST_F(AtSpiWindowWatchTest, LooksAtAnApplicationThatHasCome) {
    begin();
    setActive("/window/1", true);
    tell("/org/a11y/atspi/accessible/root", "Object", "ChildrenChanged", {QString("add"), 0, 0});
    EXPECT_EQ(front(), m_application);
}

TEST_F(AtSpiWindowWatchTest, ForgetsAnApplicationThatIsGone) {
    setActive("/window/1", true);
    begin();
    m_watch->forget(m_server.baseService());
    EXPECT_EQ(front(), std::nullopt);
}

TEST_F(AtSpiWindowWatchTest, AnApplicationThatAnswersLateIsInFrontThen) {
    begin();
    setActive("/window/1", true);
    std::vector<QDBusMessage> waiting;
    m_tree.instead = [&](const QDBusMessage& call) {
        if (call.member() != "GetState") return QDBusMessage();
        waiting.push_back(call);
        return call.createErrorReply(QDBusError::NoReply, ScriptedAccessibleTree::noAnswer);
    };
    send("/window/1", "Window", "Activate");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !waiting.empty(); }, 10'000));
    QTest::qWait(600);
    EXPECT_TRUE(isAsking());
    m_tree.instead = {};
    m_tree.handleMessage(waiting.front(), m_server);
    settle();
    EXPECT_EQ(front(), m_application);
}

TEST_F(AtSpiWindowWatchTest, AnApplicationThatDoesNotAnswerIsNotInFront) {
    setActive("/window/1", true);
    begin();
    m_tree.instead = [](const QDBusMessage& call) {
        return call.createErrorReply(QDBusError::NoReply, "hangs");
    };
    tell("/window/1", "Window", "Activate");
    EXPECT_EQ(front(), std::nullopt);
}

} // namespace
} // namespace vorq
