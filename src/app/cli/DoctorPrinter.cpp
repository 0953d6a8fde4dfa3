#include "app/cli/DoctorPrinter.h"

#include "app/cli/Terminal.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype stateWidth = 9;
constexpr qsizetype idWidth = 23;

QString linesOf(const ReportedCheck& check) {
    const QString margin(stateWidth + idWidth, u' ');
    QString lines = selfCheckStates.nameOf(check.state).leftJustified(stateWidth) +
                    check.id.leftJustified(idWidth) + check.sentence + u'\n';
    for (const QString& detail : check.details)
        lines += margin + u"- "_s + detail + u'\n';
    if (!check.advice.isEmpty()) lines += margin + u"What to do: "_s + check.advice + u'\n';
    return lines;
}

} // namespace

void DoctorPrinter::showWaiting() {
    if (m_form == Form::Lines)
        m_terminal.showStatus(u"Testing… Leave keyboard and mouse alone for a moment."_s);
}

bool DoctorPrinter::add(const ReportedCheck& check) {
    m_checks += check;
    if (m_form == Form::Lines) {
        m_terminal.showStatus({});
        m_isWritten = m_isWritten && m_terminal.print(linesOf(check).toUtf8());
    }
    showWaiting();
    return m_isWritten;
}

int DoctorPrinter::finish(const ReportHead& head) {
    m_terminal.showStatus({});
    if (m_form == Form::Json) m_isWritten = m_terminal.print(reportDocument(head, m_checks));
    const auto failures =
        std::ranges::count(m_checks, SelfCheckState::Failed, &ReportedCheck::state);
    if (m_form == Form::Lines && m_isWritten) {
        const QString sum = failures == 0 ? u"Nothing failed."_s : u"Failed: %1."_s.arg(failures);
        m_isWritten = m_terminal.print(u"\n%1\n"_s.arg(sum).toUtf8());
    }
    return failures == 0 && m_isWritten ? 0 : 1;
}

} // namespace vorq
