#include "shell/panel/PasteReader.h"

#include "platform/copying/TimeLimit.h"

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr auto answerLimit = 3s;
constexpr auto pictureLimit = 30s;

const QByteArray listedFiles = "text/uri-list"_ba;
const QByteArray filesOfFileManager = "x-special/gnome-copied-files"_ba;

bool isText(const QByteArray& form) {
    static constexpr std::array<QByteArrayView, 4> names = {"UTF8_STRING", "STRING", "TEXT",
                                                            "COMPOUND_TEXT"};
    return form.startsWith("text/plain") || std::ranges::find(names, form) != names.end();
}

QList<QUrl> urlsInLines(const QList<QByteArray>& lines) {
    QList<QUrl> urls;
    for (const QByteArray& line : lines)
        if (!line.trimmed().isEmpty() && !line.startsWith('#'))
            urls += QUrl::fromEncoded(line.trimmed());
    return urls;
}

} // namespace

QString PasteReader::pictureFormat(const QStringList& offered) {
    for (const char* format : {"image/png", "image/jpeg", "image/webp", "image/gif", "image/bmp",
                               "image/tiff", "image/heic"})
        if (offered.contains(QLatin1StringView(format))) return QString::fromLatin1(format);
    return {};
}

QList<QUrl> PasteReader::urlsOfFileManager(const QByteArray& bytes) {
    return urlsInLines(bytes.split('\n').mid(1));
}

QCoro::Task<std::optional<PasteReader::Offer>> PasteReader::offer(std::stop_token stop) const {
    const TimeLimit limit(m_clock, answerLimit, std::move(stop));
    const std::optional<QList<QByteArray>> names = co_await m_pasteboard.formNames(limit.token());
    if (!names) co_return std::nullopt;
    Offer offer;
    for (const QByteArray& form : {listedFiles, filesOfFileManager}) {
        if (!names->contains(form) || !offer.files.isEmpty()) continue;
        const std::optional<QByteArray> bytes = co_await m_pasteboard.form(form, limit.token());
        if (!bytes) co_return std::nullopt;
        offer.files =
            form == listedFiles ? urlsInLines(bytes->split('\n')) : urlsOfFileManager(*bytes);
        offer.files.removeIf([](const QUrl& url) { return !url.isLocalFile(); });
    }
    // A word processor offers a picture of its text too; the text is what is meant. A browser
    // offers the address of a picture that it copies.
    if (!std::ranges::any_of(*names, isText)) {
        QStringList offered;
        for (const QByteArray& name : *names)
            offered += QString::fromUtf8(name);
        offer.pictureFormat = pictureFormat(offered);
    }
    co_return offer;
}

QCoro::Task<std::optional<QByteArray>> PasteReader::bytes(QString form,
                                                          std::stop_token stop) const {
    const TimeLimit limit(m_clock, pictureLimit, std::move(stop));
    const std::optional<QByteArray> bytes =
        co_await m_pasteboard.form(form.toUtf8(), limit.token());
    co_return bytes;
}

} // namespace vorq
