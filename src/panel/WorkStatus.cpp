#include "panel/WorkStatus.h"

#include "panel/MessageList.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::milliseconds delayToAnalyzing{650};

} // namespace

QString rawString(VorqWorkStatus status) {
    switch (status) {
    case VorqWorkStatus::Working:
        return u"working"_s;
    case VorqWorkStatus::Analyzing:
        return u"analyzing"_s;
    case VorqWorkStatus::Finishing:
        return u"finishing"_s;
    }
    return {};
}

QString labelOf(VorqWorkStatus status) {
    switch (status) {
    case VorqWorkStatus::Working:
        return QCoreApplication::translate("WorkStatus", "Working...");
    case VorqWorkStatus::Analyzing:
        return QCoreApplication::translate("WorkStatus", "Analyzing...");
    case VorqWorkStatus::Finishing:
        return QCoreApplication::translate("WorkStatus", "Finishing...");
    }
    return {};
}

WorkStatus::WorkStatus(Clock& clock, const MessageList& messages)
    : m_clock(clock), m_messages(messages) {}

void WorkStatus::beginPanelWorkStatus() {
    m_panelWorkStatusTask.cancel();
    set(VorqWorkStatus::Working);
    m_panelWorkStatusTask.restart([self = QPointer(this)](std::stop_token stop) {
        return analyzeLater(self, std::move(stop));
    });
}

QCoro::Task<> WorkStatus::analyzeLater(QPointer<WorkStatus> self, std::stop_token stop) {
    co_await sleepFor(self->m_clock, delayToAnalyzing, stop);
    if (!self || stop.stop_requested()) co_return;
    if (self->m_messages.hasWorking()) self->set(VorqWorkStatus::Analyzing);
}

void WorkStatus::markPanelWorkFinishing() {
    m_panelWorkStatusTask.cancel();
    if (m_messages.hasWorking()) set(VorqWorkStatus::Finishing);
}

void WorkStatus::endPanelWorkStatus() {
    m_panelWorkStatusTask.cancel();
    set(VorqWorkStatus::Working);
}

void WorkStatus::set(VorqWorkStatus status) {
    if (m_status == status) return;
    m_status = status;
    emit changed();
}

} // namespace vorq
