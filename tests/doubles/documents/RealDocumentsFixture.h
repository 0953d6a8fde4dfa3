#pragma once

#include "capture/attachments/DocumentLoader.h"
#include "doubles/documents/MadeDocuments.h"
#include "platform/linux/documents/LinuxDocumentTools.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vorq {

/// Loads real files through the real tools.
class RealDocumentsFixture : public testing::Test {
  protected:
    AttachmentResult load(const QString& path) {
        return DocumentLoader(m_tools, PromptAttachment::Pipes::Refused, m_stop.get_token())
            .load(path);
    }
    QString textOf(const QString& path) {
        const auto loaded = load(path);
        return loaded ? loaded->textContent.value_or("no text") : "refused: " + loaded.error();
    }
    // Runs the load and stops it after a while; how long it went on after that.
    std::chrono::milliseconds afterStop(const QString& path, std::chrono::milliseconds wait) {
        QElapsedTimer sinceStop;
        std::jthread stopper([&] {
            std::this_thread::sleep_for(wait);
            sinceStop.start();
            m_stop.request_stop();
        });
        EXPECT_FALSE(load(path));
        EXPECT_TRUE(m_stop.stop_requested()) << "it ended by itself";
        stopper.join();
        return std::chrono::milliseconds(sinceStop.elapsed());
    }

    QTemporaryDir m_folder;
    MadeDocuments m_made{m_folder.path()};
    LinuxDocumentTools::Programs m_programs{.helper = VORQ_DOCUMENTS_PROGRAM};
    LinuxDocumentTools m_tools{m_programs};
    std::stop_source m_stop;
};

} // namespace vorq
