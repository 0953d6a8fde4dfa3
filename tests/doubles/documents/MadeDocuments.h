#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <QStringList>

namespace vorq {

/// Documents as other programs write them, each in the folder of the object.
class MadeDocuments {
  public:
    explicit MadeDocuments(QString folder) : m_folder(std::move(folder)) {}

    QString put(const QString& name, const QByteArray& bytes) const;
    QString putImage(const QString& name, const QImage& image, int quality = -1) const;

    /// A PDF of pages, each with one line; a page with "" has none.
    QString putPdf(const QString& name, const QStringList& lines) const;

    /// A ZIP archive of files with these contents, by the program zip.
    QString putZip(const QString& name, const QList<std::pair<QString, QByteArray>>& files) const;

    /// What LibreOffice makes of a text, or of a slide with it, in the format of the extension.
    QString putOffice(const QString& name, const QString& text) const;

    /// Runs a program and fails the test unless it succeeds.
    static void runTool(const QString& program, const QStringList& arguments,
                        const QString& folder = {});

    /// Pixels that do not compress.
    static QImage noise(QSize size);

  private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder + u'/' + name; }

    QString m_folder;
};

} // namespace vorq
