#include "ui/language/ShownTexts.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QQuickItem>
#include <QRegularExpression>

#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr double roundingRoom = 1;
constexpr double overlapRoom = 3;  // of lines that stand close
constexpr double partOfLine = 0.3; // that has no ink

void visitShown(QQuickItem& item, const std::function<void(QQuickItem&)>& visit) {
    if (!item.isVisible()) return;
    visit(item);
    for (QQuickItem* child : item.childItems())
        visitShown(*child, visit);
}

bool isText(const QQuickItem& item) {
    return item.inherits("QQuickText") || item.inherits("QQuickTextEdit") ||
           item.inherits("QQuickTextInput");
}

void collectHeard(QAccessibleInterface& element, QStringList& texts) {
    texts += element.text(QAccessible::Name);
    texts += element.text(QAccessible::Description);
    for (int index = 0; index < element.childCount(); ++index)
        if (QAccessibleInterface* child = element.child(index)) collectHeard(*child, texts);
}

// Of a text, where it is drawn, in its own item.
QRectF paintedPlace(const QQuickItem& text) {
    const double width = text.property("contentWidth").toDouble();
    const double height = text.property("contentHeight").toDouble();
    return {0, 0, qMin(width, text.width()), qMin(height, text.height())};
}

// What can be scrolled to is not cut off.
bool isCutByAncestors(QQuickItem& text) {
    QRectF place = text.mapRectToScene(paintedPlace(text));
    for (QQuickItem* above = text.parentItem(); above; above = above->parentItem()) {
        if (above->inherits("QQuickFlickable")) return false;
        if (!above->clip() && above->parentItem()) continue;
        const QRectF frame = above->mapRectToScene(QRectF(QPointF(), above->size()));
        const double room = roundingRoom;
        if (!frame.adjusted(-room, -room, room, room).contains(place)) return true;
    }
    return false;
}

QString whyCut(QQuickItem& text) {
    if (text.property("truncated").toBool()) return u"elided"_s;
    if (text.property("contentWidth").toDouble() > text.width() + roundingRoom)
        return u"too wide"_s;
    const double lineRoom =
        QFontMetricsF(text.property("font").value<QFont>()).height() * partOfLine;
    if (text.property("contentHeight").toDouble() > text.height() + lineRoom) return u"too high"_s;
    return isCutByAncestors(text) ? u"clipped"_s : QString();
}

// What scrolls, as the texts that scroll with each other share it.
const QQuickItem* paneOf(const QQuickItem& text) {
    const QQuickItem* above = text.parentItem();
    while (above && !above->inherits("QQuickFlickable"))
        above = above->parentItem();
    return above;
}

} // namespace

TestLanguage::TestLanguage() {
    if (!m_translator.load(QStringLiteral(VORQ_TEST_CATALOGUE)))
        qFatal("there is no catalogue of the language of tests");
    QCoreApplication::installTranslator(&m_translator);
}

bool TestLanguage::has(QString text) {
    static const QRegularExpression constant(
        u"\\bVorq\\b|\\bvorq [a-z-]+( \"\\$\\(vorq-gateway handoff\\)\")?|Super\\+Shift\\+[A-Z]"_s);
    static const QRegularExpression vowel(u"[AEIOUYaeiouy]"_s);
    return !text.remove(constant).contains(vowel);
}

std::string TestLanguage::foreign(const QStringList& texts) {
    QStringList list;
    for (const QString& text : texts)
        if (!has(text)) list += text;
    list.removeDuplicates();
    return list.join(u'\n').toStdString();
}

QStringList shownTexts(QQuickWindow& window) {
    QStringList texts;
    visitShown(*window.contentItem(), [&](QQuickItem& item) {
        if (isText(item) || item.inherits("QQuickAbstractButton"))
            texts += item.property("text").toString();
        for (const char* property : {"tip", "placeholder", "help"})
            texts += item.property(property).toString();
    });
    collectHeard(*QAccessible::queryAccessibleInterface(&window), texts);
    texts.removeAll(QString());
    return texts;
}

std::string overlappingTexts(QQuickWindow& window) {
    std::vector<QQuickItem*> texts;
    visitShown(*window.contentItem(), [&](QQuickItem& item) {
        const bool isShown = item.inherits("QQuickText") && item.opacity() > 0 &&
                             !item.property("text").toString().isEmpty();
        if (isShown && paneOf(item)) texts.push_back(&item);
    });
    QStringList pairs;
    for (std::size_t one = 0; one < texts.size(); ++one)
        for (std::size_t other = one + 1; other < texts.size(); ++other) {
            if (paneOf(*texts[one]) != paneOf(*texts[other])) continue;
            const QRectF both = texts[one]->mapRectToScene(paintedPlace(*texts[one])) &
                                texts[other]->mapRectToScene(paintedPlace(*texts[other]));
            if (both.width() > overlapRoom && both.height() > overlapRoom)
                pairs += texts[one]->property("text").toString() + " | " +
                         texts[other]->property("text").toString();
        }
    return pairs.join(u'\n').toStdString();
}

std::string cutTexts(QQuickWindow& window) {
    QStringList texts;
    visitShown(*window.contentItem(), [&](QQuickItem& item) {
        if (!item.inherits("QQuickText") || item.property("text").toString().isEmpty()) return;
        const QString why = whyCut(item);
        if (!why.isEmpty()) texts += item.property("text").toString() + ": " + why;
    });
    return texts.join(u'\n').toStdString();
}

} // namespace vorq
