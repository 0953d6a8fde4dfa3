#include "shell/panel/ClipLoader.h"

#include "shell/notices/ShellLog.h"
#include "shell/panel/AttachmentList.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace vorq {

ClipLoader::ClipLoader(AttachmentList& clips) : m_clips(clips) {
    connect(&clips, &AttachmentList::removed, this, &ClipLoader::drop);
    connect(&clips, &AttachmentList::retried, this, [this](const QUuid& id) {
        if (!m_loads.contains(id)) return;
        m_waiting.push_back(id);
        startNext();
    });
}

void ClipLoader::load(const PromptAttachment& known, Read read) {
    m_loads[known.id].read = std::move(read);
    m_waiting.push_back(known.id);
    m_clips.appendLoading(known);
    startNext();
}

void ClipLoader::startNext() {
    const auto running =
        std::ranges::count_if(m_loads, [](const auto& entry) { return entry.second.isRunning; });
    for (auto room = mostAtOnce - running; room > 0 && !m_waiting.empty(); --room) {
        const QUuid id = m_waiting.front();
        m_waiting.pop_front();
        Load& load = m_loads.at(id);
        load.isRunning = true;
        load.task.restart([this, id, read = load.read](std::stop_token stop) {
            return run(this, id, read, std::move(stop));
        });
    }
}

QCoro::Task<> ClipLoader::run(ClipLoader* self, QUuid id, Read read, std::stop_token stop) {
    AttachmentResult result = std::unexpected(ClipLoader::tr("Reading it failed."));
    try {
        result = co_await read(stop);
    } catch (const std::exception& error) {
        qCWarning(shellLog) << "reading an attachment failed:" << error.what();
    }
    if (!stop.stop_requested()) self->finish(id, result);
}

// Whoever hears of the clip may take it off, and its load goes with it.
void ClipLoader::finish(const QUuid& id, const AttachmentResult& result) {
    m_loads.at(id).isRunning = false;
    if (result) {
        m_loads.erase(id);
        m_clips.resolve(id, *result);
    } else {
        m_clips.fail(id, result.error());
    }
    startNext();
}

void ClipLoader::drop(const QUuid& id) {
    std::erase(m_waiting, id);
    if (m_loads.erase(id) > 0) startNext();
}

} // namespace vorq
