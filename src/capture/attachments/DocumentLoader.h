#pragma once

#include "capture/attachments/AttachmentReader.h"

namespace vorq {

class AttachedFile;
class DocumentTools;
struct DocumentSource;

/// Makes an attachment of one file or picture. Blocks, so not for the main thread; the errors are
/// sentences for the user.
class DocumentLoader {
  public:
    /// The tools must outlive the loader.
    DocumentLoader(DocumentTools& tools, PromptAttachment::Pipes pipes, std::stop_token stop)
        : m_tools(tools), m_pipes(pipes), m_stop(std::move(stop)) {}

    [[nodiscard]] AttachmentResult load(const QString& path) const;
    [[nodiscard]] AttachmentResult loadPicture(const QByteArray& bytes, const QString& name) const;

  private:
    using Contents = AttachmentResult; // without a name as yet

    [[nodiscard]] Contents contentsOf(AttachedFile& file, const QString& fileName) const;
    [[nodiscard]] Contents picture(AttachedFile& file) const;
    [[nodiscard]] Contents pdf(const AttachedFile& file) const;
    [[nodiscard]] Contents office(const AttachedFile& file, const QString& fileName) const;
    [[nodiscard]] Contents text(AttachedFile& file) const;

    DocumentTools& m_tools;
    PromptAttachment::Pipes m_pipes;
    std::stop_token m_stop;
};

} // namespace vorq
