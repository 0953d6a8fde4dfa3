#include "doubles/desktop/ForeignToolkits.h"

#include <QFile>

namespace vorq::desktop {
namespace {

// One page with one line of text.
QByteArray pdfOf(const QByteArray& line) {
    const QByteArray drawing = "BT /F 12 Tf 40 200 Td (" + line + ") Tj ET";
    const QByteArrayList objects{
        "<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 500 300]/Contents 4 0 R"
        "/Resources<</Font<</F 5 0 R>>>>>>",
        "<</Length " + QByteArray::number(drawing.size()) + ">>stream\n" + drawing + "\nendstream",
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"};
    QByteArray pdf = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(i + 1) + " 0 obj" + objects[i] + "endobj\n";
    }
    const QByteArray start = QByteArray::number(pdf.size());
    return pdf + "xref\n0 6\n" + table + "trailer<</Size 6/Root 1 0 R>>\nstartxref\n" + start +
           "\n%%EOF\n";
}

// A flat document of LibreOffice.
QByteArray officeDocument(const QByteArray& kind, const QByteArray& body) {
    const QByteArray names = "urn:oasis:names:tc:opendocument:xmlns:";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document xmlns:office=\"" + names +
           "office:1.0\" xmlns:text=\"" + names + "text:1.0\" xmlns:draw=\"" + names +
           "drawing:1.0\" xmlns:table=\"" + names + "table:1.0\" xmlns:svg=\"" + names +
           "svg-compatible:1.0\" office:version=\"1.3\" "
           "office:mimetype=\"application/vnd.oasis.opendocument." +
           kind + "\"><office:body><office:" + kind + ">" + body + "</office:" + kind +
           "></office:body></office:document>";
}

QByteArray presentationOf(const QByteArray& text) {
    QByteArray paragraphs;
    for (const QByteArray& line : text.split('\n'))
        paragraphs += "<text:p>" + line + "</text:p>";
    return officeDocument("presentation",
                          "<draw:page draw:name=\"slide\"><draw:frame svg:width=\"20cm\" "
                          "svg:height=\"8cm\" svg:x=\"2cm\" svg:y=\"2cm\"><draw:text-box>" +
                              paragraphs + "</draw:text-box></draw:frame></draw:page>");
}

QByteArray sheetOf(const QByteArray& text) {
    QByteArray cells;
    for (const QByteArray& cell : text.split('\t'))
        cells += "<table:table-cell office:value-type=\"string\"><text:p>" + cell +
                 "</text:p></table:table-cell>";
    return officeDocument("spreadsheet", "<table:table table:name=\"sheet\"><table:table-row>" +
                                             cells + "</table:table-row></table:table>");
}

const QByteArray swingProgram = R"(
import java.nio.file.*;
import javax.swing.*;
public class SwingText {
    public static void main(String[] arguments) throws Exception {
        String text = new String(Files.readAllBytes(Paths.get(arguments[0])), "UTF-8");
        SwingUtilities.invokeLater(() -> {
            JTextArea area = new JTextArea(text);
            area.setLineWrap(true);
            boolean isPassword = arguments.length > 1;
            JPasswordField password = new JPasswordField(text);
            JFrame frame = new JFrame("Text");
            frame.add(isPassword ? password : new JScrollPane(area));
            frame.setSize(700, isPassword ? 80 : 300);
            frame.setVisible(true);
            (isPassword ? password : area).requestFocusInWindow();
        });
    }
})";

const QByteArray tkProgram = R"(
set file [open [lindex $argv 0]]
fconfigure $file -encoding utf-8
text .text -width 60 -height 12 -wrap word
.text insert end [string trimright [read $file] "\n"]
pack .text
focus .text
)";

} // namespace

Application openKonsole(DesktopSession& session, const QByteArray& text) {
    const QString file = session.write("document.txt", text + "\n");
    session.start("konsole", "konsole",
                  {"--hide-menubar", "-e", "sh", "-c", "cat \"$0\"; sleep 600", file});
    return inFront(session, "konsole");
}

Application openKWrite(DesktopSession& session, const QByteArray& text) {
    session.start("kwrite", "kwrite", {session.write("document.txt", text)});
    return inFront(session, "kwrite");
}

Application openEmacs(DesktopSession& session, const QByteArray& text) {
    // Keys that come while it starts stop its start, and it then shows no document.
    const QString started = session.home() + "/emacs-started";
    QFile::remove(started);
    // Half of a command, the other half of which came too early, must not be typed into the text.
    session.start("emacs", "emacs-lucid",
                  {"-Q", session.write("document.txt", text), "--eval",
                   "(progn (setq buffer-read-only t) (add-hook 'window-setup-hook (lambda () "
                   "(write-region \"\" nil \"" +
                       started + "\"))))"});
    DesktopSession::waitUntil("the start of emacs", [&] { return QFile::exists(started); });
    return inFront(session, "emacs");
}

Application openEvince(DesktopSession& session, const QByteArray& text) {
    session.start("evince", "evince", {session.write("document.pdf", pdfOf(text))});
    return inFront(session, "evince");
}

static Application startSwing(DesktopSession& session, const QByteArray& text,
                              const QStringList& more) {
    const QString source = session.write("SwingText.java", swingProgram);
    (void)run("ecj", "ecj", {"-proc:none", "-11", "-d", session.home(), source},
              session.environment());
    // Alone, as Java comes, without a bridge to the bus of accessibility.
    session.start("java", "default-jre",
                  QStringList{"-Djavax.accessibility.assistive_technologies=", "-cp",
                              session.home(), "SwingText", session.write("document.txt", text)} +
                      more);
    return inFront(session, "SwingText");
}

Application openSwing(DesktopSession& session, const QByteArray& text) {
    return startSwing(session, text, {});
}

Application openSwingPassword(DesktopSession& session, const QByteArray& password) {
    return startSwing(session, password, {"password"});
}

Application openTk(DesktopSession& session, const QByteArray& text) {
    const QString script = session.write("text.tcl", tkProgram);
    session.start("wish", "tk", {script, session.write("document.txt", text)});
    return inFront(session, "text.tcl");
}

static Application startOffice(DesktopSession& session, const QString& program,
                               const QString& document, const QByteArray& content) {
    QProcessEnvironment environment;
    environment.insert("SAL_USE_VCLPLUGIN", "gtk3");
    session.start("soffice", "libreoffice-" + program + " libreoffice-gtk3",
                  {"--norestore", "--nologo", "--nofirststartwizard", "--" + program,
                   session.write(document, content)},
                  environment);
    return inFront(session, "libreoffice-" + program);
}

Application openImpress(DesktopSession& session, const QByteArray& text) {
    return startOffice(session, "impress", "document.fodp", presentationOf(text));
}

Application openCalc(DesktopSession& session, const QByteArray& text) {
    return startOffice(session, "calc", "document.fods", sheetOf(text));
}

} // namespace vorq::desktop
