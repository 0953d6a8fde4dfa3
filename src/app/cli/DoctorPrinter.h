#pragma once

#include "shell/selftest/SelfTestReport.h"

#include <cstdint>

namespace vorq {

class Terminal;

/// Shows a self-test in a terminal: each result as it comes, or all as one JSON document.
class DoctorPrinter {
  public:
    enum class Form : std::uint8_t { Lines, Json };

    /// The terminal must outlive the printer.
    DoctorPrinter(Terminal& terminal, Form form) : m_terminal(terminal), m_form(form) {}

    /// False if the output cannot take it.
    bool add(const ReportedCheck& check);

    /// Ends what is shown. Gives the exit status: 0 if nothing failed.
    int finish(const ReportHead& head);

  private:
    void showWaiting();

    Terminal& m_terminal;
    Form m_form;
    QList<ReportedCheck> m_checks;
    bool m_isWritten = true;
};

} // namespace vorq
