// What users attach to a prompt, as they do it, and what of it goes to the backend.

#include "doubles/desktop/PanelPresenceFixture.h"
#include "doubles/documents/MadeDocuments.h"

#include <QElapsedTimer>
#include <QFile>
#include <QUrl>

#include <gmock/gmock.h>

#include <csignal>

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const QByteArray pictureOfOneDot = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNk+M9QDwADhgGAWjR9awAAAABJRU5ErkJg"
    "gg==");

class AttachingTest : public PanelPresenceTest {
  protected:
    AttachingTest() { vorq.start(); }

    [[nodiscard]] bool hasClip(const QString& name) const {
        return std::ranges::any_of(vorq.controls(), [&](const AccessibleNode& node) {
            return node.isShowing && node.role == "list item" && node.name == name;
        });
    }
    void waitForClip(const QString& name) const {
        // LibreOffice takes its time when it starts.
        DesktopSession::waitUntil(
            "the clip " + name, [&] { return hasClip(name); }, std::chrono::seconds(90));
    }
    // The panel, with something of another program dropped on it.
    void openPanelAndDrop(const QStringList& arguments) {
        const Window source = openDragSource(arguments);
        openPanel();
        dragSlowly(session.geometry(source).center(), session.geometry(vorq.panel()).center());
    }
    void paste(const QByteArray& content, const QString& type) {
        session.own("clipboard", content, type);
        session.click(prompt());
        session.key({"ctrl+v"});
    }
    void pick(const QString& path) const {
        EXPECT_TRUE(vorq.press("Add files or notes"));
        DesktopSession::waitUntil("the tray", [&] { return isShowing("popup menu"); });
        const Window panel = vorq.panel();
        EXPECT_TRUE(vorq.press("Add study files"));
        DesktopSession::waitUntil("the dialog", [&] {
            const Window active = session.activeWindow();
            return active != panel && session.processOf(active) == vorq.program().process();
        });
        session.type(path);
        session.key({"Return"});
        DesktopSession::waitUntil("the panel", [&] { return session.activeWindow() == panel; });
    }
    // A package of an application of macOS, which brings its own preview.
    [[nodiscard]] QString putPackage(const QString& name, const QString& text) const {
        const MadeDocuments made(session.home());
        QFile preview(made.putOffice(name + ".pdf", text));
        EXPECT_TRUE(preview.open(QIODevice::ReadOnly));
        return made.putZip(name, {{"QuickLook/Preview.pdf", preview.readAll()},
                                  {"Index/Document.iwa", "not for us"}});
    }
    // Asks about what is attached, and gives the request.
    QJsonObject ask() {
        const std::size_t asked = vorq.prompts().size();
        session.click(prompt());
        session.type("Why");
        session.key({"Return"});
        DesktopSession::waitUntil("the request", [&] { return vorq.prompts().size() > asked; });
        return vorq.prompts().back();
    }
    static std::string field(const QJsonObject& request, const char* name) {
        return request.value(QLatin1String(name)).toString().toStdString();
    }
};

TEST_F(AttachingTest, WhatIsDroppedPickedAndPastedIsInTheRequest) {
    const QString dropped = session.write("dropped.txt", "Silt settles on the fields.");
    const QString second = session.write("dropped too.md", "# Levees\nRidges beside a river.");
    const QString picked = session.write("picked.txt", "Reeds hold the banks.");
    const QString pasted = session.write("pasted ü.txt", "Deltas grow into the sea.");
    openPanelAndDrop({dropped, second});
    waitForClip("dropped.txt");
    waitForClip("dropped too.md");
    pick(picked);
    waitForClip("picked.txt");
    paste(QUrl::fromLocalFile(pasted).toEncoded() + "\r\n", "text/uri-list");
    waitForClip("pasted ü.txt");
    paste(pictureOfOneDot, "image/png");
    waitForClip("Pasted image.png");
    const QJsonObject request = ask();
    EXPECT_THAT(field(request, "selectedText"),
                HasSubstr("--- Attached file: dropped.txt ---\nSilt settles on the fields.\n\n"
                          "--- Attached file: dropped too.md ---\n# Levees\nRidges beside a "
                          "river.\n\n--- Attached file: picked.txt ---\nReeds hold the banks.\n\n"
                          "--- Attached file: pasted ü.txt ---\nDeltas grow into the sea."));
    EXPECT_THAT(field(request, "screenDataUrl"), StartsWith("data:image/"));
    EXPECT_FALSE(hasClip("picked.txt")) << "the draft is empty again";
    EXPECT_TRUE(QFile::exists(dropped) && QFile::exists(second)) << "copied, not moved";
}

TEST_F(AttachingTest, ADocumentOfEachKindIsRead) {
    const MadeDocuments made(session.home());
    const QString pdf = made.putOffice("a.pdf", "Silt settles.");
    const QString docx = made.putOffice("b.docx", "Reeds hold.");
    const QString pptx = made.putOffice("c.pptx", "Levees rise.");
    const QString odt = made.putOffice("d.odt", "Deltas grow.");
    const QString rtf = session.write("e.rtf", R"({\rtf1\ansi Rivers bend.\par})");
    openPanelAndDrop({pdf, docx});
    pick(pptx);
    paste(QUrl::fromLocalFile(odt).toEncoded() + "\r\n" + QUrl::fromLocalFile(rtf).toEncoded(),
          "text/uri-list");
    for (const char* name : {"a.pdf", "b.docx", "c.pptx", "d.odt", "e.rtf"})
        waitForClip(QLatin1StringView(name));
    EXPECT_THAT(field(ask(), "selectedText"),
                HasSubstr("--- Attached file: a.pdf ---\nSilt settles.\n\n"
                          "--- Attached file: b.docx ---\nReeds hold.\n\n"
                          "--- Attached file: c.pptx ---\nLevees rise.\n\n"
                          "--- Attached file: d.odt ---\nDeltas grow.\n\n"
                          "--- Attached file: e.rtf ---\nRivers bend."));
}

TEST_F(AttachingTest, OlderFormatsAndThosePackedWithAPreviewAreRead) {
    const MadeDocuments made(session.home());
    const QString doc = made.putOffice("a.doc", "Silt settles.");
    const QString ppt = made.putOffice("b.ppt", "Reeds hold.");
    const QString odp = made.putOffice("c.odp", "Levees rise.");
    const QString pages = putPackage("d.pages", "Deltas grow.");
    const QString key = putPackage("e.key", "Rivers bend.");
    openPanelAndDrop({doc, pages});
    pick(odp);
    paste(QUrl::fromLocalFile(ppt).toEncoded() + "\r\n" + QUrl::fromLocalFile(key).toEncoded(),
          "text/uri-list");
    for (const char* name : {"a.doc", "b.ppt", "c.odp", "d.pages", "e.key"})
        waitForClip(QLatin1StringView(name));
    EXPECT_THAT(field(ask(), "selectedText"),
                HasSubstr("--- Attached file: a.doc ---\nSilt settles.\n\n"
                          "--- Attached file: d.pages ---\nDeltas grow.\n\n"
                          "--- Attached file: c.odp ---\nLevees rise.\n\n"
                          "--- Attached file: b.ppt ---\nReeds hold.\n\n"
                          "--- Attached file: e.key ---\nRivers bend."));
}

TEST_F(AttachingTest, APictureWithoutAFileIsDropped) {
    openPanelAndDrop({"--picture", session.write("dot.png", pictureOfOneDot)});
    waitForClip("Dropped image.png");
    EXPECT_THAT(field(ask(), "screenDataUrl"), StartsWith("data:image/"));
}

TEST_F(AttachingTest, APanelGoesOnWhileTheProgramThatWasCopiedInHangs) {
    openPanel();
    DesktopProgram& owner = session.own("clipboard", pictureOfOneDot, "image/png");
    letSettle(); // the toolkit has asked what there is to paste
    ASSERT_EQ(::kill(owner.process(), SIGSTOP), 0);
    QElapsedTimer elapsed;
    session.click(prompt());
    elapsed.start();
    session.key({"ctrl+v"});
    session.type("Why");
    DesktopSession::waitUntil("the draft", [&] { return draft() == "Why"; });
    EXPECT_LT(elapsed.elapsed(), 4000) << "the toolkit waits for five seconds";
    DesktopSession::waitUntil("the notice", [&] {
        return std::ranges::any_of(vorq.controls(), [](const AccessibleNode& node) {
            return node.isShowing && node.name.startsWith("The program that it was copied in");
        });
    });
    ASSERT_EQ(::kill(owner.process(), SIGCONT), 0);
    session.key({"ctrl+v"});
    waitForClip("Pasted image.png");
}

TEST_F(AttachingTest, FilesCopiedInAFileManagerArePasted) {
    const QByteArray first = QUrl::fromLocalFile(session.write("1.txt", "One.")).toEncoded();
    const QByteArray second = QUrl::fromLocalFile(session.write("2.txt", "Two.")).toEncoded();
    openPanel();
    paste("copy\n" + first + "\n" + second, "x-special/gnome-copied-files");
    waitForClip("1.txt");
    waitForClip("2.txt");
    EXPECT_THAT(field(ask(), "selectedText"), HasSubstr("One.\n\n--- Attached file: 2.txt"));
}

TEST_F(AttachingTest, AFolderIsRefusedOnItsClipAndKeepsThePromptBack) {
    session.write("folder/inside.txt", "not read");
    openPanelAndDrop({session.home() + "/folder"});
    waitForClip("folder, not attached");
    session.click(prompt());
    session.type("Why");
    session.key({"Return"});
    DesktopSession::waitUntil("the notice", [&] {
        return std::ranges::any_of(vorq.controls(), [](const AccessibleNode& node) {
            return node.isShowing && node.name.startsWith("Not sent:");
        });
    });
    EXPECT_EQ(draft(), "Why");
    vorq.click("Remove folder");
    const std::size_t asked = vorq.prompts().size();
    session.key({"Return"});
    DesktopSession::waitUntil("the request", [&] { return vorq.prompts().size() > asked; });
    EXPECT_FALSE(vorq.wasSent("not read"));
}

} // namespace
} // namespace vorq::desktop
