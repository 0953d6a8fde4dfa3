#pragma once

#include <QStringList>
#include <QtGlobal>

namespace vorq {

/// Takes the lines that are logged while it lives. One at a time.
class LogLines {
  public:
    LogLines() : m_former(qInstallMessageHandler(take)) { s_current = this; }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;
    ~LogLines() {
        qInstallMessageHandler(m_former);
        s_current = nullptr;
    }

    [[nodiscard]] const QStringList& all() const { return m_lines; }
    void clear() { m_lines.clear(); }

  private:
    static void take(QtMsgType, const QMessageLogContext&, const QString& line) {
        if (line.startsWith(u"Vorq")) s_current->m_lines += line;
    }

    static inline LogLines* s_current = nullptr;
    QtMessageHandler m_former;
    QStringList m_lines;
};

} // namespace vorq
