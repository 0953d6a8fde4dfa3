#pragma once

#include "platform/documents/DocumentTools.h"
#include "platform/linux/documents/GuardedProgram.h"

#include <QTemporaryDir>

namespace vorq {

/// LibreOffice for one document, with a profile of its own in a temporary folder, which goes with
/// this object.
class OfficeConverter {
  public:
    /// The program may be a name on the path.
    explicit OfficeConverter(QString program) : m_program(std::move(program)) {}

    /// The path of the document in another format: a file name extension, or one with a filter as
    /// LibreOffice writes it ("txt:Text"). The kind of the document is that of the extension.
    [[nodiscard]] std::expected<QString, DocumentFailure> convert(const QString& path,
                                                                  const QString& extension,
                                                                  const QString& format,
                                                                  const std::stop_token& stop);

  private:
    [[nodiscard]] bool writeProfile() const;
    [[nodiscard]] GuardedOutput run(const QString& copy, const QString& format,
                                    const std::stop_token& stop) const;

    QString m_program;
    QTemporaryDir m_folder;
};

} // namespace vorq
