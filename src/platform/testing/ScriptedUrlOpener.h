#pragma once

#include "platform/browser/UrlOpener.h"
#include "support/async/Wakeup.h"

#include <QList>
#include <QUrl>

namespace vorq {

/// Opens nothing, and remembers what it was to open.
class ScriptedUrlOpener final : public UrlOpener {
  public:
    QList<QUrl> inFront;
    QList<QUrl> plain;
    Opened opened = std::nullopt; ///< what openInFront() gives
    bool opens = true;            ///< what open() gives

    /// From now on openInFront() takes until answer(), or a stop.
    void holdBack() { m_holdsBack = true; }
    void answer() const { m_answered.fire(); }

    QCoro::Task<Opened> openInFront(QUrl url, std::stop_token stop) override {
        inFront += url;
        const Wakeup answered = m_answered;
        const std::stop_callback onStop(stop, [answered] { answered.fire(); });
        if (m_holdsBack) co_await answered;
        co_return opened;
    }

    bool open(const QUrl& url) override {
        plain += url;
        return opens;
    }

  private:
    bool m_holdsBack = false;
    Wakeup m_answered;
};

} // namespace vorq
