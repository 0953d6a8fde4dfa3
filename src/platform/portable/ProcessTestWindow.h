#pragma once

#include "platform/trust/TestWindow.h"
#include "support/async/Wakeup.h"

#include <QByteArray>
#include <QProcess>

#include <memory>
#include <vector>

namespace vorq {

/// A test window of the program `vorq-test-window`. Both talk by lines: the window is told "show
/// TEXT" (or "offer TEXT", if it is to hand the text out), "highlight LOCATION LENGTH" and "text",
/// and tells "shown" and "text TEXT", texts in Base64. It ends with its standard input.
class ProcessTestWindow final : public TestWindow {
  public:
    static inline const QString programName = QStringLiteral("vorq-test-window");

    /// The path of that program.
    explicit ProcessTestWindow(QString program) : m_program(std::move(program)) {}
    ~ProcessTestWindow() override;

    QCoro::Task<Opened> open(QString text, HandsOut handsOut, std::stop_token stop) override;
    void highlight(TextRange range) override;
    QCoro::Task<std::optional<QString>> text(std::stop_token stop) override;
    void close() override;

  private:
    // What was told so far; it may outlive the object while somebody waits.
    struct Told {
        QByteArray unread;
        bool isShown = false;
        bool hasEnded = false;
        std::optional<QString> text;
        std::vector<Wakeup> waiting;
    };

    static void read(QProcess& process, const std::shared_ptr<Told>& told);
    static void wake(const std::shared_ptr<Told>& told);
    static QCoro::Task<> nextNews(std::shared_ptr<Told> told, std::stop_token stop);
    void tell(const QByteArray& line);

    QString m_program;
    std::unique_ptr<QProcess> m_process;
    std::shared_ptr<Told> m_told;
};

} // namespace vorq
