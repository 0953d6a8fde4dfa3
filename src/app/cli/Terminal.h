#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

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
    /// output cannot take it, which is said on standard error unless its reader has just left.
    [[nodiscard]] bool print(const QByteArray& utf8);

    /// Writes a line to standard error.
    void complain(const QString& sentence);

  private:
    bool m_isInteractive;
    bool m_hasStatus = false;
};

/// At most so many bytes are taken from standard input.
inline constexpr qint64 pipedInputLimit = 16 << 20;

/// Everything on standard input, as text, which is UTF-8, or UTF-16 behind its mark; "" for a
/// terminal. Blocks until its end. The error is a sentence for the user, in which `limit` ends
/// "which is the most that ...".
[[nodiscard]] std::expected<QString, QString> readPipedInput(const QString& limit);

} // namespace vorq
