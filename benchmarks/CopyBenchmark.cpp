// A thousand captures by the copy shortcut of the application in front, beside the sleeps that a
// capture has in any case, with the clipboard looked at after each. Needs an X server with a window
// manager; copy_fallback.py brings one up.

#include "capture/copy/CopyFallback.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/copying/X11KeyPoster.h"
#include "platform/linux/x11/copying/X11Pasteboard.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int rounds = 1000;
constexpr int warmUpRounds = 20;
// Until the application is settled in front, and until its answer is.
constexpr Milliseconds ownSleeps = 24ms + 40ms;
constexpr Milliseconds budget = 150ms;

vorq::PasteboardContents contentsOfUser() {
    const auto form = [](const char* name, const QByteArray& bytes) {
        return vorq::PasteboardForm{.name = name, .bytes = bytes, .type = name};
    };
    return {form("text/html", QByteArray(20'000, 'h')), form("UTF8_STRING", "of the user"),
            form("image/png", QByteArray(350'000, '\1'))};
}

template<typename Result>
QCoro::Task<> follow(QCoro::Task<Result> task, std::shared_ptr<std::optional<Result>> result) {
    *result = co_await task;
}

template<typename Result>
Result awaited(QCoro::Task<Result> task) {
    const auto result = std::make_shared<std::optional<Result>>();
    follow(std::move(task), result);
    while (!result->has_value())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return **result;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(u"vorq.*=false"_s);
    vorq::SystemClock clock;
    vorq::X11Pasteboard pasteboard;
    vorq::X11KeyPoster keys;
    vorq::X11Workspace workspace;
    vorq::TurnQueue turns;
    vorq::CopyFallback fallback({clock, pasteboard, keys, workspace}, turns);
    const auto target = workspace.frontmostProcess();
    const vorq::PasteboardContents users = contentsOfUser();
    (void)awaited(pasteboard.write(users, pasteboard.lastChange().count));

    std::vector<Milliseconds> times;
    int changed = 0;
    int empty = 0;
    for (int round = -warmUpRounds; round < rounds; ++round) {
        const auto before = std::chrono::steady_clock::now();
        const QString text = awaited(fallback.captureFromCopyShortcutFast(target, {}));
        const Milliseconds time = std::chrono::steady_clock::now() - before;
        if (round < 0) continue;
        times.push_back(time - ownSleeps);
        if (text.isEmpty()) ++empty;
        const auto held = awaited(pasteboard.contents({}));
        if (!held || *held != users) ++changed;
    }
    std::ranges::sort(times);
    const auto quantile = [&](double part) {
        return times[static_cast<std::size_t>(part * double(times.size() - 1))].count();
    };
    std::printf("beyond the sleeps: median %.1f ms, 95th %.1f ms, 99th %.1f ms of %d captures\n"
                "without a text: %d, clipboard not as before: %d\n",
                quantile(0.5), quantile(0.95), quantile(0.99), rounds, empty, changed);
    return changed == 0 && empty == 0 && quantile(0.95) < budget.count() ? 0 : 1;
}
