#include "doubles/documents/MadeDocuments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int toolPatience = 120'000; // milliseconds

// The slide of a presentation in one file.
QByteArray flatSlide(const QString& text) {
    return uR"(<?xml version="1.0" encoding="UTF-8"?><office:document
xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0" office:version="1.2"
office:mimetype="application/vnd.oasis.opendocument.presentation"><office:body>
<office:presentation><draw:page draw:name="p"><draw:frame svg:width="20cm" svg:height="3cm"
svg:x="2cm" svg:y="2cm"><draw:text-box><text:p>%1</text:p></draw:text-box></draw:frame>
</draw:page></office:presentation></office:body></office:document>)"_s.arg(text)
        .toUtf8();
}

} // namespace

QString MadeDocuments::put(const QString& name, const QByteArray& bytes) const {
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    return file.fileName();
}

QString MadeDocuments::putImage(const QString& name, const QImage& image, int quality) const {
    EXPECT_TRUE(image.save(path(name), nullptr, quality))
        << qPrintable(name) << ": is qt6-image-formats-plugins installed?";
    return path(name);
}

QString MadeDocuments::putPdf(const QString& name, const QStringList& lines) const {
    QPdfWriter writer(path(name));
    QPainter painter(&writer);
    for (qsizetype page = 0; page < lines.size(); ++page) {
        if (page > 0) writer.newPage();
        // Otherwise there is no page at all.
        painter.drawLine(0, 0, 10, 10);
        if (!lines[page].isEmpty()) painter.drawText(400, 800, lines[page]);
    }
    return path(name);
}

QString MadeDocuments::putZip(const QString& name,
                              const QList<std::pair<QString, QByteArray>>& files) const {
    const QTemporaryDir folder;
    const MadeDocuments inside(folder.path());
    for (const auto& [file, bytes] : files)
        inside.put(file, bytes);
    runTool(u"zip"_s, {"-q", "-r", path(name), "."}, folder.path());
    return path(name);
}

QString MadeDocuments::putOffice(const QString& name, const QString& text) const {
    const QTemporaryDir folder;
    const MadeDocuments inside(folder.path());
    const QString extension = QFileInfo(name).suffix();
    const bool isSlide = QStringList{"odp", "ppt", "pptx"}.contains(extension);
    const QString source = isSlide ? inside.put("source.fodp", flatSlide(text))
                                   : inside.put("source.txt", text.toUtf8());
    runTool(u"soffice"_s,
            {"-env:UserInstallation=" + QUrl::fromLocalFile(folder.filePath("profile")).toString(),
             "--headless", "--convert-to", extension, "--outdir", folder.path(), source});
    EXPECT_TRUE(QFile::copy(folder.filePath("source." + extension), path(name)))
        << "are libreoffice-writer and libreoffice-impress installed?";
    return path(name);
}

void MadeDocuments::runTool(const QString& program, const QStringList& arguments,
                            const QString& folder) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(toolPatience) && process.exitCode() == 0)
        << qPrintable(program) << ": is its package installed?";
}

QImage MadeDocuments::noise(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    std::mt19937 random(1);
    for (int row = 0; row < image.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < image.width(); ++column)
            pixels[column] = static_cast<QRgb>(random()) | 0xFF000000U;
    }
    return image;
}

} // namespace vorq
