#include "capture/notes/AppleNotesExport.h"

#include "capture/source/CaptureLogging.h"
#include "support/RawNames.h"
#include "support/text/Text.h"

#include <QStringBuilder>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString createDenied =
    u"Couldn’t create the note. Allow Vorq to control Notes in System Settings → "
    "Privacy & Security → Automation."_s;
const QString appendDenied =
    u"Couldn’t update the note. Allow Vorq to control Notes in System Settings → "
    "Privacy & Security → Automation."_s;

constexpr auto automationPermissions =
    rawNames<AutomationPermission>({{AutomationPermission::Allowed, "allowed"},
                                    {AutomationPermission::Denied, "denied"},
                                    {AutomationPermission::Unknown, "unknown"}});

// A property of the note first by its identity, then by looking for it.
QString readingScript(QStringView property, QStringView id) {
    const QString note = applenotes::escaped(id);
    return u"tell application \"Notes\"\n  try\n    return " % property % u" of note id \"" % note %
           u"\"\n  end try\n  try\n    return " % property % u" of (first note whose id is \"" %
           note % u"\")\n  end try\n  return \"\"\nend tell";
}

// Without what stands between "<" and ">", one blank for each; a "<" that nothing closes, or that
// is closed at once, is text.
QString withoutTags(QStringView html) {
    QString text;
    qsizetype start = 0;
    while (start < html.size()) {
        const qsizetype open = html.indexOf(u'<', start);
        const qsizetype close = open < 0 ? -1 : html.indexOf(u'>', open);
        if (close < 0) break;
        text += html.sliced(start, open - start);
        if (close == open + 1)
            text += html.sliced(open, 2);
        else
            text += u' ';
        start = close + 1;
    }
    return text.append(html.sliced(start));
}

} // namespace

QString applenotes::notesHTML(QStringView text) {
    QString html = text.toString();
    html.replace(u"&"_qs, u"&amp;"_qs).replace(u"<"_qs, u"&lt;"_qs).replace(u">"_qs, u"&gt;"_qs);
    html.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n').replace(u"\n"_qs, u"<br>"_qs);
    return u"<div>" % html % u"</div>";
}

QString applenotes::escaped(QStringView text) {
    QString literal = text.toString();
    literal.replace(u"\\"_qs, u"\\\\"_qs).replace(u"\""_qs, u"\\\""_qs);
    return literal.replace(u'\n', u' ').replace(u'\r', u' ');
}

QString applenotes::createNoteScript(QStringView title, QStringView body) {
    const QString name = title.isEmpty() ? notesbridge::untitled : title.toString();
    const QString properties =
        u"{name:\"" % escaped(name) % u"\", body:\"" % escaped(notesHTML(body)) % u"\"}";
    return u"tell application \"Notes\"\n  launch\n"
           u"  try\n    set newNote to make new note at folder \"Notes\" of account \"iCloud\" "
           u"with properties " %
           properties %
           u"\n    return id of newNote as string\n  end try\n"
           u"  try\n    set newNote to make new note at folder \"Notes\" of account \"Google\" "
           u"with properties " %
           properties %
           u"\n    return id of newNote as string\n  end try\n"
           u"  repeat with acc in accounts\n    try\n"
           u"      set newNote to make new note at folder \"Notes\" of acc with properties " %
           properties %
           u"\n      return id of newNote as string\n    end try\n  end repeat\n"
           u"  error \"No Notes folder\"\nend tell";
}

QString applenotes::appendToNoteScript(QStringView id, QStringView body) {
    const QString note = escaped(id);
    const QString html = escaped(notesHTML(trimmed(body)));
    return u"tell application \"Notes\"\n  try\n    set theNote to note id \"" % note %
           u"\"\n    set body of theNote to (body of theNote) & \"<br><br>\" & \"" % html %
           u"\"\n    return \"ok\"\n  end try\n"
           u"  try\n    set theNote to (first note whose id is \"" %
           note % u"\")\n    set body of theNote to (body of theNote) & \"<br><br>\" & \"" % html %
           u"\"\n    return \"ok\"\n  end try\n  error \"Note not found\"\nend tell";
}

QString applenotes::listNotesScript(int limit) {
    const int count = std::clamp(limit, 1, notesbridge::mostNotes);
    return u"tell application \"Notes\"\n  set out to \"\"\n  set noteCount to 0\n"
           u"  repeat with theNote in notes\n    if noteCount ≥ " %
           QString::number(count) %
           u" then exit repeat\n    set noteCount to noteCount + 1\n"
           u"    set noteId to id of theNote as string\n"
           u"    set noteName to name of theNote as string\n"
           u"    set out to out & noteId & tab & noteName & linefeed\n"
           u"  end repeat\n  return out\nend tell";
}

QString applenotes::noteTextScript(QStringView id) {
    return readingScript(u"plaintext", id);
}

QString applenotes::noteHTMLScript(QStringView id) {
    return readingScript(u"body", id);
}

std::vector<AppleNoteSummary> applenotes::parseNotesList(QStringView output) {
    std::vector<AppleNoteSummary> notes;
    for (const QStringView line : splitAtNewlines(output)) {
        const qsizetype tab = line.indexOf(u'\t');
        if (tab < 0) continue;
        const QStringView id = trimmed(line.first(tab));
        const QStringView title = trimmed(line.sliced(tab + 1));
        if (id.isEmpty()) continue;
        notes.push_back(
            {id.toString(), title.isEmpty() ? notesbridge::untitled : title.toString()});
    }
    return notes;
}

std::optional<QString> applenotes::cleanNoteHTML(QStringView html) {
    QString text = withoutTags(html);
    text.replace(u"&nbsp;"_qs, u" "_qs).replace(u"&amp;"_qs, u"&"_qs);
    text.replace(u"&lt;"_qs, u"<"_qs).replace(u"&gt;"_qs, u">"_qs);
    const QString line = trimmed(withSingleBlanks(text)).toString();
    return line.isEmpty() ? std::nullopt : std::optional(line);
}

AppleNotesExport::AppleNotesExport(ScriptRunner runAppleScriptReturning,
                                   PermissionRequest requestAutomation)
    : m_run(std::move(runAppleScriptReturning)),
      m_requestAutomation(std::move(requestAutomation)) {}

std::vector<AppleNoteSummary> AppleNotesExport::listNotes(int limit) {
    const std::optional<QString> output = m_run(applenotes::listNotesScript(limit));
    return applenotes::parseNotesList(output.value_or(QString()));
}

std::optional<QString> AppleNotesExport::noteBody(const QString& id) {
    std::optional<QString> text = m_run(applenotes::noteTextScript(id));
    if (text && !trimmed(*text).isEmpty()) return text;
    const std::optional<QString> html = m_run(applenotes::noteHTMLScript(id));
    return html ? applenotes::cleanNoteHTML(*html) : std::nullopt;
}

std::expected<QString, BlockingNotes::Error> AppleNotesExport::createNote(const QString& title,
                                                                          const QString& body) {
    const AutomationPermission permission = m_requestAutomation();
    qCInfo(captureLog, "Vorq Apple Notes automation permission=%s",
           qUtf8Printable(automationPermissions.nameOf(permission)));
    if (permission == AutomationPermission::Denied) return std::unexpected(createDenied);
    const QString answer = m_run(applenotes::createNoteScript(title, body)).value_or(QString());
    QString id = trimmed(answer).toString();
    if (id.isEmpty()) return std::unexpected(createDenied);
    qCInfo(captureLog, "Vorq Apple Notes create succeeded id=%ls", qUtf16Printable(id));
    return id;
}

std::expected<void, BlockingNotes::Error> AppleNotesExport::appendToNote(const QString& id,
                                                                         const QString& body) {
    if (trimmed(body).isEmpty()) return std::unexpected(notesbridge::nothingToAppend);
    if (m_requestAutomation() == AutomationPermission::Denied) return std::unexpected(appendDenied);
    if (!m_run(applenotes::appendToNoteScript(id, body)))
        return std::unexpected(notesbridge::appendFailed);
    qCInfo(captureLog, "Vorq Apple Notes append succeeded id=%ls", qUtf16Printable(id));
    return {};
}

// A script would ask the user for the permission.
BlockingNotes::Reached AppleNotesExport::reach() {
    return u"Notes"_s;
}

} // namespace vorq
