#include "platform/linux/documents/OfficeConverter.h"

#include "platform/linux/documents/DocumentCopy.h"
#include "platform/linux/documents/GuardedFailure.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSemaphore>
#include <QStandardPaths>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::seconds conversionLimit{90};
constexpr quint64 converterMemory = quint64{4} << 30;
constexpr qint64 chatterLimit = 1 << 20;

// Each takes some 300 MB and a processor.
constexpr int mostConverters = 2;
constexpr int turnInterval = 50; // milliseconds, in which a stop is seen

QSemaphore& converterTurns() {
    static QSemaphore turns(mostConverters);
    return turns;
}

class ConverterTurn {
  public:
    explicit ConverterTurn(const std::stop_token& stop) {
        while (!stop.stop_requested() && !m_isHeld)
            m_isHeld = converterTurns().tryAcquire(1, turnInterval);
    }
    ~ConverterTurn() {
        if (m_isHeld) converterTurns().release();
    }
    ConverterTurn(const ConverterTurn&) = delete;
    ConverterTurn& operator=(const ConverterTurn&) = delete;
    [[nodiscard]] bool isHeld() const { return m_isHeld; }

  private:
    bool m_isHeld = false;
};

// No macro runs, and nothing that a document refers to is fetched.
constexpr QByteArrayView converterProfile = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableMacrosExecution" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="MacroSecurityLevel" oor:op="fuse"><value>3</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="BlockUntrustedRefererLinks" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Security/Scripting"><prop oor:name="DisableActiveContent" oor:op="fuse"><value>true</value></prop></item>
<item oor:path="/org.openoffice.Office.Writer/Content/Update"><prop oor:name="Link" oor:op="fuse"><value>0</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="CrashReport" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)";

} // namespace

bool OfficeConverter::writeProfile() const {
    QDir folder(m_folder.path());
    QFile file(m_folder.filePath(u"profile/user/registrymodifications.xcu"_s));
    return folder.mkpath(u"profile/user"_s) && file.open(QIODevice::WriteOnly) &&
           file.write(converterProfile.data(), converterProfile.size()) == converterProfile.size();
}

GuardedOutput OfficeConverter::run(const QString& copy, const QString& format,
                                   const std::stop_token& stop) const {
    const QUrl installation = QUrl::fromLocalFile(m_folder.filePath(u"profile"_s));
    return runGuarded(
        {.program = m_program,
         .arguments = {u"-env:UserInstallation="_s + installation.toString(), u"--headless"_s,
                       u"--norestore"_s, u"--nolockcheck"_s, u"--nodefault"_s, u"--convert-to"_s,
                       format, u"--outdir"_s, m_folder.filePath(u"out"_s), copy},
         .inputPath = u"/dev/null"_s,
         .folder = m_folder.path(),
         .isAlone = true,
         .outputLimit = chatterLimit,
         .timeLimit = conversionLimit,
         .memoryLimit = converterMemory},
        stop);
}

std::expected<QString, DocumentFailure> OfficeConverter::convert(const QString& path,
                                                                 const QString& extension,
                                                                 const QString& format,
                                                                 const std::stop_token& stop) {
    if (!m_folder.isValid() || !writeProfile()) return std::unexpected(DocumentFailure::NoRoom);
    // Those that wait take no room yet.
    const ConverterTurn turn(stop);
    if (!turn.isHeld()) return std::unexpected(DocumentFailure::Stopped);
    // A copy under a name that is taken for no option, pattern or address, and beside which nothing
    // is left.
    const QString copy = m_folder.filePath(u"document."_s + extension);
    if (const auto failure = copyDocument(path, copy, stop)) return std::unexpected(*failure);
    const GuardedOutput ended = run(copy, format, stop);
    if (const auto failure = failureOf(ended.end)) return std::unexpected(*failure);
    // It exits with 0 even where it could not read the document.
    const QString converted = m_folder.filePath(u"out/document."_s + format.section(u':', 0, 0));
    if (ended.status != 0 || !QFileInfo(converted).isFile())
        return std::unexpected(DocumentFailure::Unreadable);
    return converted;
}

} // namespace vorq
