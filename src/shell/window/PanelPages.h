#pragma once

#include <QQmlIncubator>
#include <QUrl>

#include <utility>

class QQmlComponent;
class QQuickView;

namespace vorq {

/// Loads pages into a view bit by bit, or at once when they are needed. Main thread only.
class PanelPages final : private QQmlIncubator {
  public:
    /// The view must outlive this object.
    PanelPages(QQuickView& view, QUrl source) : m_view(view), m_source(std::move(source)) {}
    ~PanelPages() override;

    /// Does a little more. False when nothing is left to do.
    bool loadFurther();

    /// Does all that is left. What fails is logged.
    void finish();
    [[nodiscard]] bool isDone() const { return m_isDone; }

    /// Takes the pages away again.
    void clear();

  private:
    // Either ends the loading in the background.
    void handOver();
    void loadAtOnce();

    QQuickView& m_view;
    QUrl m_source;
    QQmlComponent* m_component = nullptr; // null before the beginning and when it is the view's
    bool m_isDone = false;
};

} // namespace vorq
