#pragma once

#include "platform/Accessibility.h"

#include <QStringList>

#include <atomic>
#include <functional>
#include <map>

namespace vorq {

class ScriptedAccessibility;

/// An element whose reads yield what its fields hold.
class ScriptedElement final : public AccessibleElement {
  public:
    explicit ScriptedElement(QString name, ScriptedAccessibility& tree)
        : m_name(std::move(name)), m_tree(tree) {}

    std::optional<QString> text;
    std::optional<TextRange> range;
    std::optional<QString> content;
    std::optional<bool> hidesText;
    std::optional<QPointF> origin;
    std::optional<QSizeF> extent;
    /// By name.
    std::optional<QStringList> childNames;
    /// The first entry of a range counts.
    std::vector<std::pair<TextRange, QRectF>> bounds;
    std::optional<QRectF> markerBounds;
    bool takesWrites = true;
    /// Says that it took a text, and did not.
    bool feignsWrites = false;
    /// What is selected is the range of its content, and what is written changes that.
    bool isEditor = false;

    [[nodiscard]] const QString& name() const { return m_name; }

    [[nodiscard]] std::optional<QString> selectedText() const override;
    [[nodiscard]] std::optional<TextRange> selectedTextRange() const override;
    [[nodiscard]] std::optional<QString> value() const override;
    [[nodiscard]] std::optional<bool> isPasswordField() const override;
    [[nodiscard]] std::optional<QPointF> position() const override;
    [[nodiscard]] std::optional<QSizeF> size() const override;
    [[nodiscard]] std::optional<std::vector<AccessibleElementPtr>> children() const override;
    [[nodiscard]] std::optional<QRectF> boundsForRange(TextRange asked) const override;
    [[nodiscard]] std::optional<QRectF> selectedTextMarkerBounds() const override;
    bool setSelectedText(const QString& newText) override;
    bool setSelectedTextRange(TextRange newRange) override;

  private:
    QString m_name;
    ScriptedAccessibility& m_tree;
};

/// One application of named elements, whatever process is asked for. It must outlive its elements.
class ScriptedAccessibility final : public Accessibility {
  public:
    bool trusted = true;
    bool isOneStep = true;
    /// Whether small questions are not answered either.
    std::atomic<bool> silent = false;
    QString applicationName = QStringLiteral("application");
    std::optional<QString> focusedWindowName;
    std::optional<QString> focusedName;
    /// What to call after a change of it.
    mutable std::function<void()> onTrustChange;
    /// Runs before each read, with what is read ("name.selectedText").
    std::function<void(const QString&)> onRead;

    /// While set, a read comes back only when its token is stopped, as with an application that
    /// hangs.
    std::atomic<bool> hangs = false;
    /// How many reads wait for that.
    std::atomic<int> hanging = 0;

    /// The element of a name, made when first asked for.
    ScriptedElement& element(const QString& name);

    /// What was read so far, in order.
    [[nodiscard]] const QStringList& reads() const { return m_reads; }

    [[nodiscard]] bool isTrusted() const override { return trusted; }
    [[nodiscard]] bool writesInOneStep() const override { return isOneStep; }
    void whenTrustChanges(QObject* /*context*/,
                          const std::function<void()>& callback) const override {
        onTrustChange = callback;
    }
    void requestTrust() override { trusted = true; }
    [[nodiscard]] AccessibleElementPtr application(ProcessId process,
                                                   std::stop_token stop) override;
    [[nodiscard]] AccessibleElementPtr focusedWindow(ProcessId process,
                                                     std::stop_token stop) override;
    [[nodiscard]] AccessibleElementPtr focusedElement(std::optional<ProcessId> process,
                                                      std::stop_token stop) override;
    [[nodiscard]] bool isSilent(ProcessId, std::stop_token) override { return silent; }

  private:
    friend class ScriptedElement;

    AccessibleElementPtr pointer(const QString& name);
    // Whether the read may yield something.
    bool note(const QString& read);
    void hang();

    std::map<QString, std::shared_ptr<ScriptedElement>> m_elements;
    QStringList m_reads;
    std::stop_token m_stop;
};

} // namespace vorq
