#pragma once

#include "capture/selection/SelectionCapture.h"
#include "platform/Clock.h"
#include "support/async/Wakeup.h"

#include <QStringList>

#include <algorithm>
#include <chrono>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace vorq {

/// The source applications of a test and what each has highlighted.
class ScriptedCapture final : public SelectionCapture {
  public:
    bool trusted = true;
    std::map<ProcessId, QString> names; // of applications
    std::optional<ProcessId> frontmost;
    std::map<ProcessId, QString> selections; // 0 for no process
    bool readsLikeSecret = false;            // whatever is selected
    std::set<ProcessId> secrets;             // what is selected in these does
    std::map<ProcessId, CaptureMiss> misses; // of those that have nothing selected
    Clock* clock = nullptr;                  // captures take their time by it
    std::chrono::milliseconds takes{0};
    int underWay = 0; // captures
    int most = 0;     // of them at once
    std::vector<std::optional<ProcessId>> asked;
    QStringList lines;

    [[nodiscard]] bool isTrusted() const override { return trusted; }
    [[nodiscard]] std::optional<ProcessId> frontmostForeignProcess() const override {
        return frontmost;
    }
    [[nodiscard]] QString applicationName(ProcessId process) const override {
        const auto found = names.find(process);
        return found == names.end() ? QString() : found->second;
    }
    QCoro::Task<CapturedText> captureSelectedTextForHotKey(std::optional<ProcessId> source,
                                                           std::stop_token stop) override {
        asked.push_back(source);
        most = std::max(most, ++underWay);
        const Wakeup answered;
        answered.fire();
        co_await answered;
        if (clock) co_await sleepFor(*clock, takes, std::move(stop));
        --underWay;
        const auto found = selections.find(source.value_or(0));
        CapturedText captured;
        if (found != selections.end()) captured.text = found->second;
        captured.isHeldBack =
            (readsLikeSecret || secrets.contains(source.value_or(0))) && !captured.isEmpty();
        const auto miss = misses.find(source.value_or(0));
        if (miss != misses.end()) captured.miss = miss->second;
        const CapturedText given = captured;
        co_return given;
    }
    void log(const QString& line) override { lines += line; }
};

} // namespace vorq
