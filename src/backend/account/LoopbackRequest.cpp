#include "backend/account/LoopbackRequest.h"

#include <QByteArrayList>
#include <QStringDecoder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq::LoopbackRequest {
namespace {

QStringView requestLineOf(QStringView text) {
    qsizetype end = text.indexOf("\r\n"_L1);
    if (end < 0) end = text.indexOf(u'\n');
    return end < 0 ? text : text.first(end);
}

// "/callback" if it is not there.
QString targetOf(QByteArrayView request) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(request);
    const QList<QStringView> words = requestLineOf(text).split(u' ', Qt::SkipEmptyParts);
    return decoder.hasError() || words.size() < 2 ? u"/callback"_s : words[1].toString();
}

QUrl loopbackURL(const QString& path) {
    QUrl url;
    url.setScheme(u"http"_s);
    url.setHost(u"127.0.0.1"_s);
    url.setPort(port);
    url.setPath(path, QUrl::TolerantMode);
    return url;
}

struct Field {
    QByteArray name; // in lower case
    QByteArray value;
};

QList<Field> fieldsOf(const QByteArrayList& lines) {
    QList<Field> fields;
    for (const QByteArray& line : lines.mid(1)) {
        if (line.trimmed().isEmpty()) break;
        const qsizetype colon = line.indexOf(':');
        if (colon >= 0)
            fields.append({line.first(colon).trimmed().toLower(),
                           line.sliced(colon + 1).trimmed().toLower()});
    }
    return fields;
}

// A page of another site may give its own name the address of this computer.
bool namesThisComputer(const QByteArray& host) {
    const QByteArray name = host.split(':').front();
    return name == "127.0.0.1" || name == "localhost";
}

bool isOfAPage(const Field& field, bool tellsOfItsOrigin) {
    if (field.name == "host") return !namesThisComputer(field.value);
    if (field.name == "sec-fetch-mode") return field.value != "navigate";
    if (field.name == "sec-fetch-dest") return field.value != "document";
    // Of those that tell no more, as some send it with a redirection too.
    return field.name == "origin" && !tellsOfItsOrigin;
}

} // namespace

bool isWhole(QByteArrayView request) {
    return request.contains("\r\n\r\n") || request.contains("\n\n");
}

QUrl callbackURL(QByteArrayView request) {
    const QString target = targetOf(request);
    const qsizetype mark = target.indexOf(u'?');
    QUrl url = loopbackURL(mark < 0 ? target : target.first(mark));
    if (mark >= 0) url.setQuery(target.sliced(mark + 1), QUrl::TolerantMode);
    return url.isValid() ? url : loopbackURL(u"/callback"_s);
}

// A browser comes back by a redirection of the page in its window, which is a plain GET.
bool isForeign(QByteArrayView request) {
    const QByteArrayList lines = request.toByteArray().split('\n');
    const QByteArray first = lines.front().trimmed();
    if (first.contains(" HTTP/") && !first.startsWith("GET ")) return true;
    const QList<Field> fields = fieldsOf(lines);
    const bool tellsOfItsOrigin = std::ranges::any_of(
        fields, [](const Field& field) { return field.name == "sec-fetch-mode"; });
    return std::ranges::any_of(
        fields, [&](const Field& field) { return isOfAPage(field, tellsOfItsOrigin); });
}

} // namespace vorq::LoopbackRequest
