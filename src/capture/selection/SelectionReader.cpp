#include "capture/selection/SelectionReader.h"

#include "capture/selection/ColumnSelection.h"
#include "capture/source/CaptureGate.h"
#include "capture/source/LinuxApplications.h"
#include "capture/source/SourceApplication.h"
#include "support/text/Text.h"

#include <QPointer>

#include <memory>

namespace vorq {
namespace {

// Some browsers put a character in the place of each image and each field.
constexpr QChar objectCharacter(u'\uFFFC');

SelectionReader::Ask withLines(SelectionReader::Ask ask) {
    return [ask = std::move(ask)](const CaptureSource& from, SelectionReading& reading) {
        ask(from, reading);
        if (reading.text.contains(u'\n')) reading.lines = selectedLines(from);
    };
}

} // namespace

QString SelectionReading::highlightedText() const {
    QString found = highlight ? highlight->text : QString();
    return trimmed(found.remove(objectCharacter)).toString();
}

SelectionReader::SelectionReader(const Services& services)
    : m_services(services),
      m_accessibilityThread(services.clock),
      m_primaryThread(services.clock) {}

Clock::Duration SelectionReader::headStartOf(ProcessId process) const {
    return showsWebPages(m_services.gate.identifierOf(process)) ? CaptureBudget::accessibilityLimit
                                                                : headStart;
}

// Browsers keep what they handed out after a deselect, and may tell accessibility nothing of it.
bool SelectionReader::isStale(const Highlight& highlight, ProcessId process) const {
    return highlight && highlight->mayBeUndone &&
           showsWebPages(m_services.gate.identifierOf(process));
}

QCoro::Task<SelectionReading> SelectionReader::readAccessibility(std::optional<ProcessId> source,
                                                                 Ask ask, Clock::Duration limit,
                                                                 std::stop_token stop) {
    m_background.request_stop();
    return askThread(source, std::move(ask), limit, std::move(stop));
}

QCoro::Task<SelectionReading> SelectionReader::readInBackground(std::optional<ProcessId> source,
                                                                Ask ask, Clock::Duration limit,
                                                                std::stop_token stop) {
    std::stop_source background;
    m_background = background;
    const std::stop_callback onStop(std::move(stop),
                                    [background]() mutable { background.request_stop(); });
    SelectionReading result =
        co_await askThread(source, std::move(ask), limit, background.get_token());
    co_return result;
}

QCoro::Task<SelectionReading> SelectionReader::askThread(std::optional<ProcessId> source, Ask ask,
                                                         Clock::Duration limit,
                                                         std::stop_token stop) {
    const auto reading = std::make_shared<SelectionReading>();
    Accessibility& accessibility = m_services.accessibility;
    CaptureThread::Job job = [&accessibility, source, reading,
                              ask = std::move(ask)](std::stop_token running) {
        const CaptureSource from{
            .accessibility = accessibility, .process = source, .stop = std::move(running)};
        ask(from, *reading);
    };
    const bool isInTime =
        co_await m_accessibilityThread.run(std::move(job), limit, std::move(stop));
    SelectionReading result;
    // Until it has come to its end, it still belongs to the other thread.
    if (isInTime) result = std::move(*reading);
    result.isUnanswered = !isInTime;
    co_return result;
}

QCoro::Task<SelectionReader::Highlight>
SelectionReader::readPrimary(std::optional<ProcessId> source, CaptureBudget budget,
                             std::stop_token headStartEnd, std::stop_token stop) {
    const QPointer<SelectionReader> self(this);
    Highlight result;
    const auto process = source ? source : m_services.gate.frontmostForeignProcess();
    if (!process) co_return result;
    co_await sleepFor(m_services.clock, headStartOf(*process), std::move(headStartEnd));
    if (!self || stop.stop_requested()) co_return result;
    const auto highlight = std::make_shared<Highlight>();
    PrimarySelection& primary = m_services.primary;
    CaptureThread::Job job = [&primary, process, highlight](std::stop_token running) {
        *highlight = primary.highlightOf(*process, std::move(running));
    };
    const Clock::Duration limit = budget.forHighlight();
    const bool isInTime = co_await m_primaryThread.run(std::move(job), limit, std::move(stop));
    if (self && isInTime && !isStale(*highlight, *process)) result = std::move(*highlight);
    co_return result;
}

QCoro::Task<SelectionReading> SelectionReader::read(std::optional<ProcessId> source,
                                                    CaptureBudget budget, Ask ask,
                                                    IsEnough isEnough, std::stop_token stop) {
    std::stop_source headStartEnd;
    std::stop_source highlightStop;
    const std::stop_callback onStop(stop, [highlightStop, headStartEnd] {
        highlightStop.request_stop();
        headStartEnd.request_stop();
    });
    QCoro::Task<Highlight> highlighting =
        readPrimary(source, budget, headStartEnd.get_token(), highlightStop.get_token());
    const Clock::Duration limit = budget.forAccessibility();
    SelectionReading reading = co_await readAccessibility(source, std::move(ask), limit, stop);
    if (reading.isPassword || reading.isNothingSelected || isEnough(reading))
        highlightStop.request_stop();
    headStartEnd.request_stop();
    reading.highlight = co_await highlighting;
    if (highlightStop.stop_requested()) reading.highlight.reset();
    if (reading.highlight && isCutOfColumns(reading.lines, reading.highlight->text))
        reading.text = reading.highlightedText();
    // What is returned is moved from.
    SelectionReading result = std::move(reading);
    co_return result;
}

QCoro::Task<std::expected<SelectionReading, CaptureMiss>>
SelectionReader::readForKey(std::optional<ProcessId> source, Ask ask, IsEnough isEnough,
                            std::stop_token stop) {
    std::expected<SelectionReading, CaptureMiss> result =
        std::unexpected(CaptureMiss::NothingHighlighted);
    const CaptureGate& gate = m_services.gate;
    source = gate.settled(source);
    if (gate.excludes(source)) result = std::unexpected(CaptureMiss::Excluded);
    if (!gate.admits(source)) co_return result;
    const CaptureBudget budget = beginBudget();
    if (isLinuxApplication(ApplicationKind::ColumnEditor, gate.identifierOfSource(source)))
        ask = withLines(std::move(ask));
    SelectionReading reading =
        co_await read(source, budget, std::move(ask), std::move(isEnough), stop);
    if (reading.isPassword) result = std::unexpected(CaptureMiss::Password);
    if (stop.stop_requested() || reading.isPassword) co_return result;
    reading.source = source;
    result = std::move(reading);
    co_return result;
}

} // namespace vorq
