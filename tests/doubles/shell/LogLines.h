#pragma once

#include <QStringList>

namespace vorq {

/// Takes the lines that are logged while it lives. One at a time.
class LogLines {
  public:
    LogLines();
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;
    ~LogLines();

    [[nodiscard]] const QStringList& all() const { return m_lines; }
    void clear() { m_lines.clear(); }

  private:
    static void take(QtMsgType type, const QMessageLogContext& context, const QString& line);

    static LogLines* s_current;
    QtMessageHandler m_former;
    QStringList m_lines;
};

} // namespace vorq
