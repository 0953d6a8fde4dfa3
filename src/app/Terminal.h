#pragma once

#include <QByteArray>
#include <QString>

namespace vorq {

/// Standard output and error of the program, which may be a terminal, a pipe or a file.
class Terminal {
  public:
    Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal();

    [[nodiscard]] bool isInteractive() const { return m_isInteractive; }

    /// Shows one line that the next output replaces. On a terminal only; "" takes it away.
    void showStatus(const QString& text);

    /// Writes to standard output at once; on a terminal without what it would obey. False if the
    /// output cannot take it.
    bool print(const QByteArray& utf8);

    /// Writes a line to standard error.
    void complain(const QString& sentence);

  private:
    bool m_isInteractive;
    bool m_hasStatus = false;
};

/// Everything on standard input, as text; "" for a terminal.
[[nodiscard]] QString readPipedInput();

} // namespace vorq
