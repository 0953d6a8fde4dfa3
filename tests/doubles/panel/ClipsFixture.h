#pragma once

#include "doubles/capture/ScriptedAttachmentReader.h"
#include "doubles/panel/ConversationFixture.h"
#include "platform/testing/ScriptedPasteboard.h"
#include "shell/panel/PanelViewModel.h"

#include <QSignalSpy>

namespace vorq {

/// The composer over a reader that reads when the test says so.
class ClipsFixture : public ConversationFixture {
  protected:
    ~ClipsFixture() override { m_model.reset(); }

    PanelViewModel& model() {
        if (!m_model)
            m_model = std::make_unique<PanelViewModel>(state(), m_clock, m_reader, nullptr,
                                                       &m_pasteboard);
        return *m_model;
    }
    AttachmentList& clips() { return model().attachments(); }

    /// The user chooses files of these names.
    void choose(const QStringList& names) {
        QList<QUrl> files;
        for (const QString& name : names)
            files += QUrl::fromLocalFile(QStringLiteral("/files/") + name);
        model().intake()->attachFiles(files);
        m_clock.settle();
    }
    void finish(std::size_t reading) {
        m_reader.finish(reading);
        m_clock.settle();
    }
    void fail(std::size_t reading, const QString& sentence) {
        m_reader.fail(reading, sentence);
        m_clock.settle();
    }
    void remove(int row) {
        clips().removeAt(row);
        m_clock.settle();
    }
    void send() {
        model().send();
        m_clock.settle();
    }

    /// "a.txt…" for one that is loading, "a.txt!" for one that failed.
    [[nodiscard]] std::vector<std::string> shown() {
        std::vector<std::string> all;
        for (int row = 0; row < clips().count(); ++row) {
            const QModelIndex at = clips().index(row);
            const bool isLoading = at.data(AttachmentList::LoadingRole).toBool();
            const bool hasFailed = at.data(AttachmentList::FailedRole).toBool();
            all.push_back(at.data(AttachmentList::NameRole).toString().toStdString() +
                          (isLoading   ? "…"
                           : hasFailed ? "!"
                                       : ""));
        }
        return all;
    }
    /// What the user has said so far.
    [[nodiscard]] std::vector<std::string> said() {
        std::vector<std::string> all;
        for (const VorqMessage& message : messages())
            if (message.role == MessageRole::User) all.push_back(message.text.toStdString());
        return all;
    }

    ScriptedAttachmentReader m_reader;
    ScriptedPasteboard m_pasteboard;
    std::unique_ptr<PanelViewModel> m_model;
};

} // namespace vorq
