#include "doubles/ui/WalkthroughStage.h"

#include "platform/Workspace.h"
#include "platform/copying/Pasteboard.h"
#include "platform/trust/TestWindow.h"
#include "shell/selftest/TestStage.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class GatedCheck final : public SelfTestCheck {
  public:
    /// The gate must outlive the check.
    GatedCheck(SelfCheck result, const Wakeup& gate) : m_result(std::move(result)), m_gate(gate) {}

    [[nodiscard]] QString id() const override { return m_result.id; }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override {
        const Wakeup gate = m_gate; // of this run
        const std::stop_callback onStop(std::move(stop), [gate] { gate.fire(); });
        co_await gate;
        const SelfCheck given = m_result;
        co_return given;
    }

  private:
    SelfCheck m_result;
    const Wakeup& m_gate;
};

QList<SelfCheck> someResults(bool isLucky) {
    return {{.id = u"session"_s,
             .sentence = {"The session is %1: nothing of Vorq is missing in it.", {u"X11"_s}}},
            {.id = u"accessibility"_s, .sentence = {"Applications can be read."}},
            {.id = u"programs"_s,
             .state = SelfCheckState::Warning,
             .sentence = {"Programs that show Vorq no text, as they were started before "
                          "accessibility was turned on: %1.",
                          {u"2"_s}},
             .advice = {"Close these programs and start them again."},
             .details = {u"FeatherPad"_s, u"Okular"_s}},
            {.id = u"tray"_s, .sentence = {"The tray shows Vorq."}},
            {.id = u"capture-copy"_s,
             .state = SelfCheckState::Skipped,
             .sentence = {"What is on the clipboard could not be given back, so it was left "
                          "alone."}},
            {.id = u"hot-keys"_s,
             .state = isLucky ? SelfCheckState::Ok : SelfCheckState::Failed,
             .sentence = {"Taken by another program: %1.", {u"Super+Shift+A"_s}},
             .advice = {"Bind keys of your desktop to: %1", {u"vorq summon"_s}}}};
}

struct NoStage {
    NoWorkspace workspace;
    NoTestWindow window;
    NoPasteboard highlight;
};

std::shared_ptr<TestStage> emptyStage(Clock& clock) {
    static NoStage none;
    return std::make_shared<TestStage>(TestStage::Services{.clock = clock,
                                                           .workspace = none.workspace,
                                                           .window = none.window,
                                                           .highlight = none.highlight});
}

QQuickItem* firstOfWalkthrough(QQuickItem& from,
                               const std::function<bool(const QQuickItem&)>& matches) {
    if (!from.isVisible()) return nullptr;
    if (matches(from)) return &from;
    for (QQuickItem* child : from.childItems())
        if (QQuickItem* found = firstOfWalkthrough(*child, matches)) return found;
    return nullptr;
}

void collectHeard(QAccessibleInterface* element, std::vector<std::string>& heard) {
    if (element == nullptr || element->state().invisible) return;
    const QString name = element->text(QAccessible::Name);
    const QString role = QVariant::fromValue(element->role()).toString();
    if (!name.isEmpty()) heard.push_back((role + u": "_s + name).toStdString());
    for (int index = 0; index < element->childCount(); ++index)
        collectHeard(element->child(index), heard);
}

} // namespace

WalkthroughStage::WalkthroughStage() {
    QAccessible::setActive(true);
    permissions.setProbe(&probe);
    permissions.setPrivacySettings(&privacy);
    walkthrough =
        std::make_unique<Walkthrough>(Walkthrough::Services{.clock = clock,
                                                            .defaults = defaults,
                                                            .permissions = permissions,
                                                            .privacy = privacy,
                                                            .selfTest = [this]() -> SelfTest& {
                                                                if (!test) makeTest();
                                                                return *test;
                                                            },
                                                            .applicationName = u"Vorq"_s});
    context = std::make_unique<UiContext>(*walkthrough, look);
    engine = std::make_unique<QQmlEngine>();
    context->install(*engine);
}

WalkthroughStage::~WalkthroughStage() {
    window.reset();
    engine.reset();
    context.reset();
    walkthrough.reset();
    test.reset();
    clock.settle();
    QAccessible::setActive(false);
}

void WalkthroughStage::makeTest() {
    const QList<SelfCheck> results = someResults(isLucky);
    m_gates.resize(static_cast<std::size_t>(results.size()));
    SelfTest::Checks checks;
    for (std::size_t number = 0; number < m_gates.size(); ++number)
        checks.push_back(
            std::make_shared<GatedCheck>(results[static_cast<qsizetype>(number)], m_gates[number]));
    test = std::make_unique<SelfTest>(clock, std::move(checks), emptyStage(clock));
    QObject::connect(test.get(), &SelfTest::started, test.get(), [this] {
        std::ranges::generate(m_gates, [] { return Wakeup(); });
        m_opened = 0;
    });
}

void WalkthroughStage::show(int tallest) {
    permissions.openAccessibilityWalkthrough();
    walkthrough->begin();
    window = std::make_unique<QQuickView>(engine.get(), nullptr);
    window->setColor(Qt::transparent);
    window->setResizeMode(QQuickView::SizeViewToRootObject);
    window->setSource(QUrl(u"qrc:/qt/qml/Vorq/walkthrough/WalkthroughView.qml"_s));
    if (!window->rootObject()) qFatal("the walkthrough does not load");
    window->rootObject()->setProperty("tallest", tallest);
    window->show();
    window->requestActivate();
    settle();
}

void WalkthroughStage::settle(int milliseconds) {
    QElapsedTimer elapsed;
    elapsed.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        clock.settle();
    } while (elapsed.elapsed() < milliseconds);
}

void WalkthroughStage::setDark(bool isDark) {
    appearance.setAppAppearance(isDark ? AppAppearancePreference::Dark
                                       : AppAppearancePreference::Light);
}

void WalkthroughStage::grant() {
    probe.text = PermissionState::Granted;
    permissions.refreshPermissions();
    settle();
}

void WalkthroughStage::finishChecks(int count) {
    for (; count > 0 && m_opened < m_gates.size(); --count)
        m_gates[m_opened++].fire();
    settle();
}

void WalkthroughStage::finishTest() {
    finishChecks(static_cast<int>(m_gates.size()));
}

QQuickItem* WalkthroughStage::saying(const QString& words) {
    return firstOfWalkthrough(*window->contentItem(), [&](const QQuickItem& item) {
        return item.property("text").toString() == words;
    });
}

void WalkthroughStage::click(const QString& words) {
    QQuickItem* item = saying(words);
    if (item == nullptr) qFatal("nothing says %s", qPrintable(words));
    QTest::mouseClick(window.get(), Qt::LeftButton, {},
                      item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    settle();
}

void WalkthroughStage::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(window.get(), key, modifiers);
    settle();
}

QString WalkthroughStage::focused() {
    const QAccessibleInterface* heard =
        QAccessible::queryAccessibleInterface(window->activeFocusItem());
    return heard != nullptr ? heard->text(QAccessible::Name) : QString();
}

std::vector<std::string> WalkthroughStage::heard() {
    std::vector<std::string> found;
    collectHeard(QAccessible::queryAccessibleInterface(window.get()), found);
    return found;
}

} // namespace vorq
