// Selections in text editors of several toolkits.

#include "doubles/desktop/CaptureDesktop.h"

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

const auto text = u"Grüße 😀 an alle\nzweite Zeile, nicht leer"_s;

struct Editor {
    const char* name;
    Application (*open)(DesktopSession&, const QByteArray&);
    /// Whether Ctrl+A selects the whole in one element.
    bool isOneElement = true;
    /// Whether it tells where the selection is, and not where another line is.
    bool tellsBounds = true;
    bool takesText = true;
};

void PrintTo(const Editor& editor, std::ostream* out) {
    *out << editor.name;
}

class EditorCapture : public testing::TestWithParam<Editor> {
  protected:
    EditorCapture() : application(GetParam().open(session, text.toUtf8())) {
        // Keys that come while an editor still loads are lost.
        DesktopSession::waitUntil("the whole text", [&] {
            return focus()->value().value_or("").startsWith(text.section('\n', 0, 0));
        });
    }

    [[nodiscard]] CaptureSource source() const {
        return {.accessibility = *accessibility, .process = application.process, .stop = {}};
    }
    [[nodiscard]] AccessibleElementPtr focus() const {
        AccessibleElementPtr element;
        DesktopSession::waitUntil("the focus", [&] {
            element = accessibility->focusedElement(application.process, {});
            return element != nullptr;
        });
        return element;
    }
    // Of several elements none has the whole, which is then handed out as PRIMARY.
    void expectAcrossLines(const QString& expected) const {
        if (GetParam().isOneElement) {
            waitForFocusedText(*accessibility, application.process, expected);
            return;
        }
        X11PrimarySelection primary;
        DesktopSession::waitUntil("the highlight", [&] {
            const auto highlight = primary.highlightOf(application.process, {});
            return highlight && highlight->text.trimmed() == expected;
        });
        waitForFocusedText(*accessibility, application.process, "");
        EXPECT_FALSE(tellsThatNothingIsSelected(source()));
    }
    void selectWord() const {
        session.key(
            {"ctrl+Home", "Right", "Right", "Right", "Right", "Right", "Right", "Right", "Right"});
        session.key({"shift+Right", "shift+Right"});
    }

    DesktopSession session;
    std::unique_ptr<AtSpiAccessibility> accessibility = connected();
    Application application;
};

TEST_P(EditorCapture, ReadsWhatIsSelected) {
    session.own("clipboard", "of the user");

    // Of what was selected before we came nothing was told.
    session.key({"ctrl+Home"});
    session.key(QStringList(10, "shift+Right"));
    waitForFocusedText(*accessibility, application.process, "Grüße 😀 an");
    const auto late = connected();
    waitForFocusedText(*late, application.process, "Grüße 😀 an");

    selectWord();
    waitForFocusedText(*accessibility, application.process, "an");
    const auto capture = captureFromFocusedAccessibilityElement(source());
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->text, "an");
    EXPECT_EQ(capture->selectedRange, (TextRange{.location = 9, .length = 2}));
    EXPECT_EQ(focus()->value().value_or("").section('\n', 0, 0), "Grüße 😀 an alle");

    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(focusedText(*accessibility, application.process), "an");
    EXPECT_EQ(session.activeWindow(), application.window);

    session.key({"ctrl+a"});
    expectAcrossLines(text);
    // To the beginning of the next line, of which nothing is selected.
    session.key({"ctrl+Home", "shift+Down"});
    expectAcrossLines(text.section('\n', 0, 0));

    session.key({"ctrl+Home"});
    waitForFocusedText(*accessibility, application.process, "");
    EXPECT_TRUE(tellsThatNothingIsSelected(source()));
}

TEST_P(EditorCapture, KnowsWhereItIs) {
    selectWord();
    waitForFocusedText(*accessibility, application.process, "an");
    const auto capture = captureFromFocusedAccessibilityElement(source());
    ASSERT_TRUE(capture);
    const QRectF window(session.geometry(application.window));

    ASSERT_TRUE(capture->elementAXFrame);
    EXPECT_TRUE(window.intersects(*capture->elementAXFrame));
    EXPECT_GE(capture->elementAXFrame->top(), window.top() - 1);
    EXPECT_EQ(capture->rawAXFrame.has_value(), GetParam().tellsBounds);
    if (!capture->rawAXFrame) return;
    EXPECT_TRUE(window.contains(*capture->rawAXFrame));
    EXPECT_LT(capture->rawAXFrame->width(), 60);
    EXPECT_LT(capture->rawAXFrame->height(), 60);
}

TEST_P(EditorCapture, SelectsAndReplaces) {
    // A key that is still on its way would undo what is selected below.
    session.key({"ctrl+Home", "shift+Right"});
    waitForFocusedText(*accessibility, application.process, text.left(1));
    DesktopSession::waitUntil("the whole text", [&] {
        return focus()->value().value_or("").startsWith(text.section('\n', 0, 0));
    });

    ASSERT_TRUE(focus()->setSelectedTextRange({.location = 9, .length = 2}));
    waitForFocusedText(*accessibility, application.process, "an");
    EXPECT_TRUE(focus()->setSelectedText("für 😀😀"));
    EXPECT_EQ(focus()->value().value_or("").section('\n', 0, 0), "Grüße 😀 für 😀😀 alle");
    EXPECT_FALSE(focus()->setSelectedTextRange({.location = 0, .length = 100'000}));
}

TEST(PasswordCapture, NeverReadsAPasswordOfAnEditor) {
    DesktopSession session;
    const auto accessibility = connected();
    const Application application = openTextWindow(session, text.toUtf8());
    session.key({"ctrl+a"});
    waitForFocusedText(*accessibility, application.process, text);

    session.key({"Tab", "ctrl+a"});
    AccessibleElementPtr field;
    DesktopSession::waitUntil("the focus of the password", [&] {
        field = accessibility->focusedElement(application.process, {});
        return field && field->size() && !field->value();
    });
    const CaptureSource source{
        .accessibility = *accessibility, .process = application.process, .stop = {}};
    EXPECT_EQ(captureSelectedTextFromFocusedElement(source), "");
    EXPECT_TRUE(tellsThatNothingIsSelected(source));
    EXPECT_EQ(field->boundsForRange({.location = 0, .length = 1}), std::nullopt);
    EXPECT_FALSE(field->setSelectedTextRange({.location = 0, .length = 1}));
    EXPECT_FALSE(field->setSelectedText("anders"));
}

// Toolkits complain of a program that asks for what an element has not got.
TEST(EditorLog, HoldsNoComplaintOfUs) {
    DesktopSession session;
    const auto accessibility = connected();
    DesktopProgram& editor =
        session.start("mousepad", "mousepad", {session.write("document.txt", text.toUtf8())});
    const DesktopSession::Window window = session.waitForWindow("mousepad");
    session.activate(window);
    const CaptureSource source{
        .accessibility = *accessibility, .process = session.processOf(window), .stop = {}};
    DesktopSession::waitUntil("the whole text", [&] {
        const AccessibleElementPtr element = accessibility->focusedElement(source.process, {});
        return element && element->value() == text;
    });

    EXPECT_EQ(selectionOwningElement(source), nullptr);
    DesktopSession::waitUntil("the log", [turns = 0]() mutable { return ++turns > 20; });
    EXPECT_THAT(editor.output().toStdString(), testing::Not(testing::HasSubstr("CRITICAL")));
}

INSTANTIATE_TEST_SUITE_P(
    , EditorCapture,
    testing::Values(Editor{.name = "mousepad", .open = openMousepad},
                    Editor{.name = "texteditor", .open = openTextEditor, .tellsBounds = false},
                    Editor{.name = "featherpad", .open = openFeatherPad, .tellsBounds = false},
                    Editor{.name = "qt6", .open = openTextWindow, .tellsBounds = false},
                    Editor{.name = "writer", .open = openWriter, .isOneElement = false}),
    [](const testing::TestParamInfo<Editor>& info) { return std::string(info.param.name); });

} // namespace
} // namespace vorq::desktop
