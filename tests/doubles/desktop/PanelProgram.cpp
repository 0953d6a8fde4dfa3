#include "doubles/desktop/PanelProgram.h"

#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq::desktop {

const QString material =
    u"A river carries silt from the mountains to the sea. When it leaves its banks it slows down, "
    "and the silt settles on the fields. Farmers along the Nile needed no manure, because the "
    "silt renewed the soil each year – größer als gedacht. At the sea it drops the rest of its "
    "load and builds a delta."_s;

PanelProgram::PanelProgram(const SessionOptions& options) : session(options) {
    session.write(".config/Vorq/settings.json", "{}");
    m_relay = std::make_unique<RecordingRelay>(startGateway(session));
    signIn(session, m_relay->url());
}

PanelProgram::~PanelProgram() {
    stop();
}

quint16 startGateway(DesktopSession& session) {
    DesktopProgram& gateway =
        session.start(VORQ_GATEWAY_PROGRAM, "", {"serve", "--port", "0", "--stream-delay", "0"});
    DesktopSession::waitUntil("the backend", [&] { return gateway.output().contains('\n'); });
    const QByteArray line = gateway.output().split('\n').front();
    const int port = line.sliced(line.lastIndexOf(':') + 1).trimmed().toInt();
    if (port <= 0) throw std::runtime_error("the backend says: " + line.toStdString());
    return static_cast<quint16>(port);
}

void signIn(DesktopSession& session, const QString& backend) {
    const QByteArray link =
        run(VORQ_GATEWAY_PROGRAM, "", {"handoff"}, session.environment()).trimmed();
    QProcessEnvironment environment;
    environment.insert("VORQ_API_BASE_URL", backend);
    DesktopProgram& opened =
        session.start(VORQ_PROGRAM, "", {"open", QString::fromUtf8(link)}, environment);
    DesktopSession::waitUntil("the sign-in", [&] { return !opened.isRunning(); });
    if (!opened.output().contains("Signed in as "))
        throw std::runtime_error("the sign-in says: " + opened.output().toStdString());
}

void PanelProgram::start(const QString& backend, const QProcessEnvironment& additional) {
    stop();
    QProcessEnvironment environment;
    environment.insert("VORQ_API_BASE_URL", backend.isEmpty() ? m_relay->url() : backend);
    environment.insert("VORQ_DEBUG_PLACE", "0");
    environment.insert(additional);
    m_program = &session.start(VORQ_PROGRAM, "", {"--background"}, environment);
    // A Wayland session has none.
    DesktopSession::waitUntil("the hot keys", [this] {
        const QByteArray log = m_program->output();
        return log.contains("clear-chat hotkey.") ||
               log.contains("failed to install hotkey event handler");
    });
}

void PanelProgram::summon() const {
    run(VORQ_PROGRAM, "", {"summon"}, session.environment());
}

void PanelProgram::exclude(const QStringList& identifiers) const {
    QFile file(session.home() + "/.config/Vorq/settings.json");
    if (!file.open(QIODevice::ReadWrite)) throw std::runtime_error("no settings");
    QJsonObject settings = QJsonDocument::fromJson(file.readAll()).object();
    settings["vorq.capture.excludedApplications"] = QJsonArray::fromStringList(identifiers);
    file.resize(0);
    file.write(QJsonDocument(settings).toJson());
}

void PanelProgram::stop() {
    m_tree.reset();
    if (m_program != nullptr) m_program->kill();
    m_program = nullptr;
}

DesktopSession::Window PanelProgram::panel() const {
    return windowWhose([](const QString& title) { return title == u"Vorq"; });
}

DesktopSession::Window PanelProgram::windowTitled(const QString& beginning) const {
    return windowWhose([&](const QString& title) { return title.startsWith(beginning); });
}

DesktopSession::Window PanelProgram::windowWhose(const IsTitle& isTitle) const {
    if (m_program == nullptr) return 0;
    for (const DesktopSession::Window window : session.windows())
        if (session.processOf(window) == m_program->process() && isTitle(session.titleOf(window)) &&
            session.isShown(window))
            return window;
    return 0;
}

void PanelProgram::waitForPanel() const {
    DesktopSession::waitUntil("the panel with the keyboard",
                              [this] { return panel() != 0 && session.activeWindow() == panel(); });
}

void PanelProgram::waitForNoPanel() const {
    DesktopSession::waitUntil("the panel to go", [this] { return panel() == 0; });
}

void PanelProgram::dismissTo(DesktopSession::Window window) const {
    session.key({"Escape"});
    waitForNoPanel();
    DesktopSession::waitUntil("the window that was in front",
                              [&] { return session.activeWindow() == window; });
}

std::vector<QJsonObject> PanelProgram::prompts() const {
    return m_relay->requests("/ai/prompt");
}

QStringList PanelProgram::analysed() const {
    QStringList texts;
    for (const QJsonObject& body : m_relay->requests("/ai/analyze"))
        texts += body.value("text").toString();
    return texts;
}

const AccessibleTree& PanelProgram::tree() const {
    if (!m_tree) m_tree = std::make_unique<AccessibleTree>(m_program->process());
    return *m_tree;
}

std::vector<AccessibleNode> PanelProgram::controls() const {
    return tree().read();
}

QString PanelProgram::textOf(const AccessibleNode& node) const {
    return m_tree ? m_tree->text(node) : QString();
}

bool PanelProgram::press(const QString& name) const {
    for (const AccessibleNode& node : controls())
        if (node.name == name && node.isShowing) return m_tree->press(node);
    return false;
}

QRect PanelProgram::placeOf(const QString& name) const {
    for (const AccessibleNode& node : controls())
        if (node.name == name && node.isShowing) return m_tree->place(node);
    return {};
}

void PanelProgram::click(const QString& name) const {
    QRect place;
    DesktopSession::waitUntil(name, [&] {
        place = placeOf(name);
        return !place.isEmpty();
    });
    session.click(place.center());
}

std::optional<AccessibleNode> PanelProgram::focused() const {
    for (const AccessibleNode& node : controls())
        if (node.isFocused && node.isFocusable && node.role != "frame") return node;
    return std::nullopt;
}

std::vector<AccessibleNode> PanelProgram::tabTo(const QString& name) const {
    std::vector<AccessibleNode> passed;
    for (int key = 0; key < 40; ++key) {
        const auto before = focused();
        session.key({"Tab"});
        std::optional<AccessibleNode> now;
        const QString from = before ? before->role + " " + before->name : QString();
        DesktopSession::waitUntil("Tab to lead on from " + from, [&] {
            now = focused();
            return now && (!before || now->path != before->path);
        });
        passed.push_back(*now);
        if (now->name == name) return passed;
    }
    QString names;
    for (const AccessibleNode& node : passed)
        names += "\n[" + node.role + "] " + node.name.left(40);
    throw std::runtime_error(("Tab does not lead to " + name + names).toStdString());
}

QStringList PanelProgram::conversation() const {
    const std::vector<AccessibleNode> nodes = controls();
    QStringList entries;
    for (const AccessibleNode& node : nodes) {
        const auto isList = [&](const AccessibleNode& other) {
            return other.path == node.parent && other.role == "list" &&
                   other.name == "Conversation";
        };
        if (node.role == "list item" && std::ranges::any_of(nodes, isList)) entries += node.name;
    }
    return entries;
}

void PanelProgram::waitForGreeting() const {
    const QStringList alone{u"Vorq: Hello 👋, Vorq here…"_s};
    DesktopSession::waitUntil("the greeting alone", [&] { return conversation() == alone; });
}

QStringList PanelProgram::waitForReply(qsizetype entries) const {
    QStringList last;
    const auto isComplete = [&] {
        const std::vector<AccessibleNode> nodes = controls();
        last = conversation();
        return last.size() == entries && last.back().startsWith("Vorq: ") &&
               std::ranges::none_of(nodes,
                                    [](const AccessibleNode& node) { return node.name == "Stop"; });
    };
    try {
        DesktopSession::waitUntil("a complete reply", isComplete, std::chrono::seconds(20));
    } catch (const std::runtime_error& error) {
        QString seen;
        for (const AccessibleNode& node : controls())
            seen += "\n[" + node.role + "] " + node.name;
        throw std::runtime_error(error.what() + seen.toStdString() + "\n" +
                                 m_program->output().toStdString());
    }
    return last;
}

// A program that is still busy, as a browser with its first page, answers later than the hot key
// waits for it.
static void waitUntilItAnswersAtOnce(const DesktopSession& session) {
    constexpr qint64 atOnce = 60; // milliseconds
    int quickAnswers = 0;
    DesktopSession::waitUntil("the program to be at rest", [&] {
        QElapsedTimer waited;
        waited.start();
        const bool hasAnswered = !session.selection("primary").isEmpty();
        quickAnswers = hasAnswered && waited.elapsed() < atOnce ? quickAnswers + 1 : 0;
        return quickAnswers >= 3;
    });
}

void highlight(const DesktopSession& session, const std::function<void()>& action,
               const QByteArray& expected) {
    QByteArray last;
    // Done again before the program has dealt with it, an action may undo the one before. So a slow
    // program gets more time for each.
    qint64 patience = 0; // milliseconds
    const auto isThere = [&] {
        patience += 1000;
        action();
        QElapsedTimer waited;
        waited.start();
        do
            last = session.selection("primary");
        while (last.trimmed() != expected && waited.elapsed() < patience);
        return last.trimmed() == expected;
    };
    try {
        DesktopSession::waitUntil("the highlight", isThere, std::chrono::seconds(60));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string(error.what()) + "; highlighted is \"" +
                                 last.toStdString() + '"');
    }
    waitUntilItAnswersAtOnce(session);
}

} // namespace vorq::desktop
