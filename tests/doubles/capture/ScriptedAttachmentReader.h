#pragma once

#include "capture/attachments/AttachmentReader.h"
#include "support/async/Wakeup.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// Readings that end when the test says so, or when they are stopped.
class ScriptedAttachmentReader final : public AttachmentReader {
  public:
    struct Reading {
        QString path;       ///< or the name of the picture
        QByteArray picture; ///< empty for a file
        std::stop_token stop;
        std::optional<AttachmentResult> result;
        Wakeup ended;

        [[nodiscard]] bool isUnderWay() const { return !result; }
        [[nodiscard]] bool wasStopped() const { return stop.stop_requested(); }
    };

    /// Set, a reading ends by itself with what this gives.
    std::function<AttachmentResult(const QString& path)> answer;

    /// In the order in which they were asked for.
    [[nodiscard]] const std::vector<std::shared_ptr<Reading>>& readings() const {
        return m_readings;
    }
    [[nodiscard]] long underWay() const {
        return std::ranges::count_if(m_readings,
                                     [](const auto& reading) { return reading->isUnderWay(); });
    }

    /// Ends the reading of this number as its file with a text.
    void finish(std::size_t number, const QString& text = QStringLiteral("text")) {
        PromptAttachment attachment;
        attachment.fileName = m_readings.at(number)->path.section(u'/', -1);
        attachment.textContent = text;
        end(number, attachment);
    }
    void fail(std::size_t number, const QString& sentence) {
        end(number, std::unexpected(sentence));
    }
    void end(std::size_t number, AttachmentResult result) {
        Reading& reading = *m_readings.at(number);
        if (!reading.isUnderWay()) return;
        reading.result = std::move(result);
        reading.ended.fire();
    }

    QCoro::Task<AttachmentResult> read(QString path, std::stop_token stop) override {
        return begin(std::move(path), {}, std::move(stop));
    }
    QCoro::Task<AttachmentResult> readPicture(QByteArray bytes, QString name,
                                              std::stop_token stop) override {
        return begin(std::move(name), std::move(bytes), std::move(stop));
    }

  private:
    QCoro::Task<AttachmentResult> begin(QString path, QByteArray picture, std::stop_token stop) {
        const auto reading = std::make_shared<Reading>(
            Reading{std::move(path), std::move(picture), std::move(stop), {}, {}});
        m_readings.push_back(reading);
        if (answer) end(m_readings.size() - 1, answer(reading->path));
        const std::stop_callback stopped(reading->stop, [&reading] {
            if (!reading->isUnderWay()) return;
            reading->result = std::unexpected(QStringLiteral("stopped"));
            reading->ended.fire();
        });
        co_await reading->ended;
        const AttachmentResult result = *reading->result;
        co_return result;
    }

    std::vector<std::shared_ptr<Reading>> m_readings;
};

} // namespace vorq
