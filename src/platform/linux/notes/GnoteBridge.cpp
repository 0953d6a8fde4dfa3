#include "platform/linux/notes/GnoteBridge.h"

#include "platform/linux/notes/GnoteText.h"
#include "support/text/Text.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString service = u"org.gnome.Gnote"_s;
const QString remotePath = u"/org/gnome/Gnote/RemoteControl"_s;
const QString remoteInterface = u"org.gnome.Gnote.RemoteControl"_s;
const QString busService = u"org.freedesktop.DBus"_s;
const QString busPath = u"/org/freedesktop/DBus"_s;

constexpr int busPatience = 1000; // milliseconds, for what the bus itself answers
constexpr int mostNumbers = 1000; // tried for one title

QDBusMessage busCall(const QString& method, const QVariantList& arguments = {}) {
    QDBusMessage call = QDBusMessage::createMethodCall(busService, busPath, busService, method);
    call.setArguments(arguments);
    return call;
}

// While Gnote starts, its name is there before its object.
bool isNotThereYet(const QDBusMessage& reply) {
    const QString error = reply.errorName();
    return error == u"org.freedesktop.DBus.Error.UnknownMethod" ||
           error == u"org.freedesktop.DBus.Error.UnknownObject" ||
           error == u"org.freedesktop.DBus.Error.UnknownInterface";
}

} // namespace

/// One operation: its calls share the time that it has.
class GnoteBridge::Session {
  public:
    Session(const QDBusConnection& bus, Patience patience)
        : m_bus(bus), m_patience(patience), m_deadline(patience.operation) {}

    /// Whether Gnote runs and answers; starts it if need be.
    bool start() {
        while (true) {
            // The second argument is reserved by the bus.
            const QDBusMessage reply = m_bus.call(busCall(u"StartServiceByName"_s, {service, 0U}),
                                                  QDBus::Block, remaining());
            if (reply.type() != QDBusMessage::ReplyMessage) return false;
            if (call(u"Version"_s, {})) return true;
            // It may have been ending just now.
            if (!canRetry()) return false;
        }
    }

    std::optional<QVariant> call(const QString& method, const QVariantList& arguments) {
        while (true) {
            const QDBusMessage reply =
                m_bus.call(request(method, arguments), QDBus::Block, remaining());
            if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
                return reply.arguments().constFirst();
            if (!isNotThereYet(reply) || !canRetry()) return std::nullopt;
        }
    }

    QString string(const QString& method, const QVariantList& arguments) {
        return call(method, arguments).value_or(QVariant()).toString();
    }

    bool succeeds(const QString& method, const QVariantList& arguments) {
        return call(method, arguments).value_or(QVariant()).toBool();
    }

    /// The answers to the same question about each note, asked all at once; invalid where there is
    /// none.
    std::vector<QVariant> ofEach(const QString& method, const QStringList& notes) {
        std::vector<QDBusPendingCall> calls;
        for (const QString& note : notes)
            calls.push_back(m_bus.asyncCall(request(method, {note}), remaining()));
        std::vector<QVariant> answers;
        for (QDBusPendingCall& pending : calls) {
            pending.waitForFinished();
            const QVariantList arguments = pending.reply().arguments();
            const bool isAnswer = !pending.isError() && !arguments.isEmpty();
            answers.push_back(isAnswer ? arguments.constFirst() : QVariant());
        }
        return answers;
    }

  private:
    // Waits a little, while there is time.
    bool canRetry() {
        if (m_deadline.hasExpired()) return false;
        QThread::msleep(static_cast<unsigned long>(m_patience.retryEvery.count()));
        return true;
    }

    static QDBusMessage request(const QString& method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(service, remotePath, remoteInterface, method);
        message.setArguments(arguments);
        return message;
    }

    int remaining() const {
        return static_cast<int>(std::max<qint64>(m_deadline.remainingTime(), 1));
    }

    QDBusConnection m_bus;
    Patience m_patience;
    QDeadlineTimer m_deadline;
};

GnoteBridge::GnoteBridge(QDBusConnection bus) : GnoteBridge(std::move(bus), Patience()) {}

GnoteBridge::GnoteBridge(QDBusConnection bus, Patience patience)
    : m_bus(std::move(bus)), m_patience(patience) {}

bool GnoteBridge::isAvailable(const QDBusConnection& bus) {
    if (!bus.isConnected()) return false;
    for (const char* const method : {"ListActivatableNames", "ListNames"}) {
        const QDBusReply<QStringList> names =
            bus.call(busCall(QLatin1StringView(method)), QDBus::Block, busPatience);
        if (names.isValid() && names.value().contains(service)) return true;
    }
    return false;
}

bool GnoteBridge::ownsNote(const QString& id) {
    return id.startsWith(u"note://"_s);
}

std::vector<AppleNoteSummary> GnoteBridge::listNotes(int limit) {
    Session session(m_bus, m_patience);
    if (!session.start()) return {};
    const QStringList templates = session.call(u"GetAllNotesWithTag"_s, {u"system:template"_s})
                                      .value_or(QVariant())
                                      .toStringList();
    QStringList notes = session.call(u"ListAllNotes"_s, {}).value_or(QVariant()).toStringList();
    notes.removeIf([&](const QString& note) { return templates.contains(note); });

    const std::vector<QVariant> dates = session.ofEach(u"GetNoteChangeDateUnix"_s, notes);
    std::vector<std::pair<qint64, qsizetype>> order; // newest first, else as Gnote lists them
    for (qsizetype index = 0; index < notes.size(); ++index)
        order.emplace_back(-dates[static_cast<std::size_t>(index)].toLongLong(), index);
    std::sort(order.begin(), order.end());
    order.resize(std::min<std::size_t>(
        order.size(), static_cast<std::size_t>(std::clamp(limit, 1, notesbridge::mostNotes))));

    QStringList latest;
    for (const auto& [age, index] : order)
        latest += notes[index];
    const std::vector<QVariant> titles = session.ofEach(u"GetNoteTitle"_s, latest);
    std::vector<AppleNoteSummary> summaries;
    for (qsizetype index = 0; index < latest.size(); ++index) {
        const QString title = titles[static_cast<std::size_t>(index)].toString();
        summaries.push_back({latest[index], title.isEmpty() ? notesbridge::untitled : title});
    }
    return summaries;
}

std::optional<QString> GnoteBridge::noteBody(const QString& id) {
    Session session(m_bus, m_patience);
    if (!ownsNote(id) || !session.start()) return std::nullopt;
    const QString text = session.string(u"GetNoteContents"_s, {id});
    return trimmed(text).isEmpty() ? std::nullopt : std::optional(text);
}

std::expected<QString, BlockingNotes::Error> GnoteBridge::createNote(const QString& title,
                                                                     const QString& body) {
    Session session(m_bus, m_patience);
    if (!session.start())
        return std::unexpected(u"Couldn’t create the note. Gnote does not answer."_s);
    const QString wanted = gnote::storableTitle(title);
    QString note;
    for (int number = 1; note.isEmpty() && number <= mostNumbers; ++number) {
        const QString name = number == 1 ? wanted : u"%1 (%2)"_s.arg(wanted).arg(number);
        const std::optional<QVariant> answer = session.call(u"CreateNamedNote"_s, {name});
        if (!answer) break;
        note = answer->toString(); // empty if the title is taken
    }
    // What Gnote made of the title is the first line of the note.
    const QString name = note.isEmpty() ? QString() : session.string(u"GetNoteTitle"_s, {note});
    const QString text =
        notesbridge::withTitle(name, trimmed(gnote::storableText(body)).toString());
    if (!name.isEmpty() && session.succeeds(u"SetNoteContents"_s, {note, text})) return note;
    if (!note.isEmpty()) session.call(u"DeleteNote"_s, {note});
    return std::unexpected(u"Couldn’t create the note. Gnote does not take it."_s);
}

std::expected<void, BlockingNotes::Error> GnoteBridge::appendToNote(const QString& id,
                                                                    const QString& body) {
    const QString text = gnote::storableText(trimmed(body));
    if (trimmed(text).isEmpty()) return std::unexpected(notesbridge::nothingToAppend);
    Session session(m_bus, m_patience);
    if (!ownsNote(id) || !session.start()) return std::unexpected(notesbridge::appendFailed);
    const QString content = session.string(u"GetNoteContentsXml"_s, {id});
    if (content.isEmpty()) return std::unexpected(notesbridge::appendFailed);
    if (const std::optional<QString> xml = gnote::withAppended(content, text)) {
        if (session.succeeds(u"SetNoteContentsXml"_s, {id, *xml})) return {};
        return std::unexpected(notesbridge::appendFailed);
    }
    // Without its format the note keeps its text, which matters more.
    const QString plain = session.string(u"GetNoteContents"_s, {id});
    if (trimmed(plain).isEmpty()) return std::unexpected(notesbridge::appendFailed);
    const QString both = gnote::storableText(plain) + "\n\n" + text;
    if (session.succeeds(u"SetNoteContents"_s, {id, both})) return {};
    return std::unexpected(notesbridge::appendFailed);
}

// One that does not run would be started by a question.
BlockingNotes::Reached GnoteBridge::reach() {
    if (!isAvailable(m_bus)) return std::unexpected(u"Gnote is not installed."_s);
    const QDBusReply<bool> runs =
        m_bus.call(busCall(u"NameHasOwner"_s, {service}), QDBus::Block, busPatience);
    if (runs.isValid() && runs.value() && !Session(m_bus, m_patience).call(u"Version"_s, {}))
        return std::unexpected(u"Gnote does not answer."_s);
    return u"Gnote"_s;
}

} // namespace vorq
