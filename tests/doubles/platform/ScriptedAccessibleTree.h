#pragma once

#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QRect>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

namespace vorq {

/// What an element tells of itself. Offsets count UTF-16 units.
struct ScriptedTreeElement {
    std::uint32_t role = 0;
    bool hasText = true;
    QString text;
    std::vector<std::pair<int, int>> selections;
    /// By path; each takes the place of an object character of the text.
    QStringList links;
    QStringList children;
    QMap<QString, QString> attributes;
    std::uint32_t states = 0;
    /// Empty for an element that tells of none.
    QRect place;
    /// Where stretches of the text are, by their ends; one of no size for others.
    std::map<std::pair<int, int>, QRect> bounds;
};

/// An application of named elements on the bus of accessibility, which it announces too. It answers
/// on the thread of its connection and refuses all that its elements do not have.
class ScriptedAccessibleTree final : public QDBusVirtualObject {
  public:
    explicit ScriptedAccessibleTree(const QString& address) : m_address(address) {}

    /// By path.
    std::map<QString, ScriptedTreeElement> elements;
    /// The text of an error that is not sent: whoever has the call answers it later.
    static constexpr auto noAnswer = "no answer";

    /// Answers in place of what is here, for some calls; nothing leaves a call to what is here.
    std::function<QDBusMessage(const QDBusMessage&)> instead;
    /// The calls about texts, as "path.method", that came for elements without a text.
    [[nodiscard]] const QStringList& misplaced() const { return m_misplaced; }
    [[nodiscard]] const QStringList& calls() const { return m_calls; }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;

  private:
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& call, const QString& service);
    [[nodiscard]] static QDBusMessage answerOfText(const QDBusMessage& call,
                                                   const ScriptedTreeElement& element,
                                                   const QString& service);

    QString m_address;
    QStringList m_misplaced;
    QStringList m_calls;
};

} // namespace vorq
