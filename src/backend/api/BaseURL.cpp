#include "backend/api/BaseURL.h"

#include "platform/AppPaths.h"
#include "support/text/Text.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 maximumSidecarSize = 1 << 20;

std::optional<QByteArray> readSidecar(const QString& folder, QLatin1StringView name) {
    if (folder.isEmpty()) return std::nullopt;
    QFile file(folder + u'/' + name);
    if (!QFileInfo(file).isFile() || file.size() > maximumSidecarSize) return std::nullopt;
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll();
}

QString firstLineOf(const std::optional<QByteArray>& content) {
    if (!content) return {};
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(*content);
    return decoder.hasError() ? QString() : trimmed(firstLine(text)).toString();
}

QString sidecarValue(const BaseURLCandidates& candidates) {
    for (const auto* content :
         {&candidates.executableSidecar, &candidates.resourcesSidecar, &candidates.homeSidecar}) {
        if (QString line = firstLineOf(*content); !line.isEmpty()) return line;
    }
    return {};
}

QStringView withoutSlashes(QStringView text) {
    while (text.startsWith(u'/'))
        text = text.sliced(1);
    while (text.endsWith(u'/'))
        text.chop(1);
    return text;
}

// QUrl itself would lower-case the host and drop an empty port.
QString spelled(const QString& text, const QUrl& url) {
    const bool plain = std::ranges::all_of(
        text, [](QChar unit) { return unit.unicode() > 0x20 && unit.unicode() < 0x7F; });
    if (plain && QUrl(text, QUrl::StrictMode).isValid()) return text;
    return QString::fromLatin1(url.toEncoded());
}

} // namespace

BaseURLCandidates readBaseURLCandidates(const AppPaths& paths) {
    return {
        .vorqVariable = qEnvironmentVariable("VORQ_API_BASE_URL"),
        .tolvaVariable = qEnvironmentVariable("TOLVA_API_BASE_URL"),
        .executableSidecar = readSidecar(paths.executableFolder(), ".vorq-api-base"_L1),
        .resourcesSidecar = readSidecar(paths.resourcesFolder(), ".vorq-api-base"_L1),
        .homeSidecar = readSidecar(paths.home(), ".vorq/api_base_url"_L1),
    };
}

QString resolveBaseURL(const BaseURLCandidates& candidates) {
    for (const QString& candidate :
         {candidates.vorqVariable, candidates.tolvaVariable, sidecarValue(candidates)}) {
        const QString text = withoutSlashes(trimmed(candidate)).toString();
        if (text.isEmpty()) continue;
        if (const QUrl url(text, QUrl::TolerantMode); url.isValid()) return spelled(text, url);
    }
    return u"http://127.0.0.1:8787"_s;
}

std::optional<QUrl> endpointURL(const QString& baseURL, const QString& path) {
    const QUrl relative(path.startsWith(u'/') ? path : u'/' + path, QUrl::TolerantMode);
    if (!relative.isValid()) return std::nullopt;
    return QUrl(baseURL).resolved(relative);
}

QString websiteSignInURL(const QString& baseURL, const QString& mode) {
    const bool isSignUp = mode == u"sign-up" || mode == u"create" || mode == u"signup";
    QString page = baseURL.section(u'#', 0, 0).section(u'?', 0, 0);
    while (page.endsWith(u'/'))
        page.chop(1);
    return page + u"/signin.html?mode="_s + (isSignUp ? u"sign-up"_s : u"sign-in"_s) +
           u"&client=macos&next=/auth/mac-handoff.html"_s;
}

} // namespace vorq
