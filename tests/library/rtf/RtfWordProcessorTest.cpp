// What real word processors make of our RTF, and we of theirs.

#include "library/notes/VorqNoteImport.h"
#include "library/richtext/NoteTypography.h"
#include "library/rtf/RtfReader.h"
#include "library/rtf/RtfWriter.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace vorq {
namespace {

constexpr int patience = 100'000; // milliseconds for a word processor to convert a file

// Converts files in a folder and a home of its own.
struct RtfWordProcessorTest : testing::Test {
    QTemporaryDir folder;

    void put(const QString& name, const QByteArray& content) const {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    [[nodiscard]] QByteArray content(const QString& name) const {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    // The output of a program that writes it to this file.
    QByteArray run(const QString& program, const QStringList& arguments, const QString& output,
                   const char* package) const {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", folder.filePath("home"));
        environment.remove("DISPLAY");
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForStarted()) << "install the package " << package;
        if (!process.waitForFinished(patience)) {
            process.kill();
            process.waitForFinished();
            ADD_FAILURE() << program.toStdString() << " does not end";
        }
        const QByteArray result = content(output);
        EXPECT_FALSE(result.isEmpty()) << program.toStdString() << " wrote nothing; the package "
                                       << package << " may be missing";
        return result;
    }

    QByteArray byLibreOffice(const QByteArray& rtf, const QString& format) const {
        put("note.rtf", rtf);
        return run("soffice",
                   {"-env:UserInstallation=file://" + folder.filePath("profile"), "--headless",
                    "--convert-to", format, "--outdir", "out", "note.rtf"},
                   "out/note." + format.section(':', 0, 0), "libreoffice-writer");
    }

    QByteArray byAbiWord(const QByteArray& rtf, const QString& format) const {
        put("note.rtf", rtf);
        return run("abiword", {"--to=" + format, "--to-name=out." + format, "note.rtf"},
                   "out." + format, "abiword");
    }
};

NoteRichText sampleNote() {
    NoteRichText note = VorqNoteImport::attributedDocument(
        u"# Plan für 東京\n\nFirst **bold** words.\n\n## Steps\n- one\n- two\n\n1. x\n\n"
        u"> said {x}\\y\n\n```\na  **b**\n  c\n```");
    VorqNoteImport::appendParagraph(u"Smaller", NoteTextStyle::Subheading, 1, note);
    VorqNoteImport::appendParagraph(u"dashed", NoteTextStyle::DashedList, 1, note);
    NoteAttributes marked = NoteTypography::attributes(NoteTextStyle::Body);
    marked.highlight = NoteRgb{255, 240, 120};
    marked.color = {.role = NoteColor::Role::Own, .rgb = {200, 0, 0}};
    note.append(u"\n", NoteTypography::attributes(NoteTextStyle::Body));
    note.append(u"marked", marked);
    return note;
}

// The text without what readers differ in: white space at the ends and empty lines.
QStringList linesOf(const QString& text) {
    QStringList lines;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) {
        if (!line.trimmed().isEmpty()) lines += line;
    }
    return lines;
}

QStringList linesOf(QByteArray utf8) {
    return linesOf(QString::fromUtf8(utf8.replace("\r\n", "\n")));
}

// All that both word processors keep of the sample.
void expectSample(const NoteRichText& text) {
    ASSERT_EQ(linesOf(text.text()), linesOf(sampleNote().text()));
    const auto at = [&](QStringView word) { return text.attributesAt(text.text().indexOf(word)); };
    using enum NoteTextStyle;
    const std::vector<std::pair<QStringView, NoteTextStyle>> styles = {
        {u"Plan", Title},       {u"First", Body},         {u"Steps", Heading},
        {u"one", BulletedList}, {u"x", NumberedList},     {u"said", BlockQuote},
        {u"**b**", Mono},       {u"Smaller", Subheading}, {u"dashed", DashedList},
    };
    for (const auto& [word, style] : styles) {
        SCOPED_TRACE(word.toString().toStdString());
        const NoteAttributes attributes = at(word);
        const NoteAttributes& wanted = NoteTypography::attributes(style);
        EXPECT_EQ(attributes.style, style);
        EXPECT_EQ(attributes.font, wanted.font);
        EXPECT_EQ(attributes.paragraph.headIndent, wanted.paragraph.headIndent);
        EXPECT_EQ(attributes.paragraph.firstLineIndent, wanted.paragraph.firstLineIndent);
        EXPECT_NEAR(attributes.paragraph.spacing, wanted.paragraph.spacing, 0.1);
    }
    EXPECT_EQ(at(u"bold").font.weight, NoteFontWeight::Bold);
    EXPECT_EQ(at(u"marked").color.rgb, (NoteRgb{200, 0, 0}));
    EXPECT_EQ(at(u"marked").highlight, (NoteRgb{255, 240, 120}));
    EXPECT_EQ(at(u"First").highlight, std::nullopt);
    EXPECT_EQ(at(u"First").color, NoteColor());
}

} // namespace

TEST_F(RtfWordProcessorTest, LibreOfficeShowsOurText) {
    EXPECT_EQ(linesOf(byLibreOffice(writeRtf(sampleNote()), "txt:Text (encoded):UTF8,LF")),
              linesOf(sampleNote().text()));
}

TEST_F(RtfWordProcessorTest, LibreOfficeKnowsOurHeadings) {
    const QString document = QString::fromUtf8(byLibreOffice(writeRtf(sampleNote()), "fodt"));
    EXPECT_TRUE(document.contains(QRegularExpression("outline-level=\"1\"[^>]*>Steps<")))
        << document.toStdString();
    EXPECT_TRUE(document.contains(QRegularExpression("outline-level=\"2\"[^>]*>Smaller<")));
    EXPECT_TRUE(document.contains("style:parent-style-name=\"Title\""));
}

TEST_F(RtfWordProcessorTest, LibreOfficeKeepsOurFormat) {
    expectSample(readRtf(byLibreOffice(writeRtf(sampleNote()), "rtf")).value_or(NoteRichText()));
}

TEST_F(RtfWordProcessorTest, AbiWordShowsOurText) {
    EXPECT_EQ(linesOf(byAbiWord(writeRtf(sampleNote()), "txt")), linesOf(sampleNote().text()));
}

TEST_F(RtfWordProcessorTest, AbiWordKeepsOurFormat) {
    expectSample(readRtf(byAbiWord(writeRtf(sampleNote()), "rtf")).value_or(NoteRichText()));
}

TEST_F(RtfWordProcessorTest, WeReadWhatLibreOfficeWritesOfItsOwnLists) {
    put("page.html",
        "<html><head><meta charset=utf-8></head><body><h1>Head</h1><p>Text <b>bold</b> <i>it</i> "
        "Привет 日本 €</p><ul><li>one</li><li>two</li></ul><ol><li>x</li><li>y</li></ol>"
        "<table><tr><td>a</td><td>b</td></tr><tr><td>c</td><td>d</td></tr></table>"
        "<p>end</p></body></html>");
    const QByteArray rtf =
        run("soffice",
            {"-env:UserInstallation=file://" + folder.filePath("profile"), "--headless",
             "--infilter=HTML (StarWriter)", "--convert-to", "rtf", "--outdir", "out", "page.html"},
            "out/page.rtf", "libreoffice-writer");
    const NoteRichText text = readRtf(rtf).value_or(NoteRichText());
    EXPECT_EQ(linesOf(text.text()),
              (QStringList{"Head", "Text bold it Привет 日本 €", "•\u00A0one", "•\u00A0two",
                           "1.\u00A0x", "2.\u00A0y", "a\tb", "c\td", "end"}))
        << rtf.toStdString();
    EXPECT_EQ(text.attributesAt(0).style, NoteTextStyle::Heading);
    EXPECT_EQ(text.attributesAt(text.text().indexOf(u"two")).style, NoteTextStyle::BulletedList);
    EXPECT_EQ(text.attributesAt(text.text().indexOf(u"bold")).font.weight, NoteFontWeight::Bold);
    EXPECT_TRUE(text.attributesAt(text.text().indexOf(u"it П")).font.isItalic);
}

} // namespace vorq
