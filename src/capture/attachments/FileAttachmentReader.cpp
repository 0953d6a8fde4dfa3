#include "capture/attachments/FileAttachmentReader.h"

#include "capture/attachments/DocumentLoader.h"
#include "platform/documents/DocumentTools.h"
#include "support/async/OnPool.h"

#include <utility>

namespace vorq {

FileAttachmentReader::FileAttachmentReader(std::shared_ptr<DocumentTools> tools,
                                           PromptAttachment::Pipes pipes)
    : m_tools(std::move(tools)), m_pipes(pipes) {}

QCoro::Task<AttachmentResult> FileAttachmentReader::read(QString path, std::stop_token stop) {
    return onPool(
        [path = std::move(path), tools = m_tools, pipes = m_pipes](std::stop_token stopped) {
            return DocumentLoader(*tools, pipes, std::move(stopped)).load(path);
        },
        std::move(stop));
}

QCoro::Task<AttachmentResult> FileAttachmentReader::readPicture(QByteArray bytes, QString name,
                                                                std::stop_token stop) {
    return onPool(
        [bytes = std::move(bytes), name = std::move(name), tools = m_tools,
         pipes = m_pipes](std::stop_token stopped) {
            return DocumentLoader(*tools, pipes, std::move(stopped)).loadPicture(bytes, name);
        },
        std::move(stop));
}

} // namespace vorq
