// Highlight, hot key, reply, and back to the work: the built program beside real applications.

#include "doubles/desktop/PanelProgram.h"

#include <gmock/gmock.h>

#include <csignal>

namespace vorq::desktop {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

// Opens the application, highlights the whole material in it and gives its window.
using Highlighted = Application (*)(DesktopSession&);

struct Source {
    const char* name;
    Highlighted open;
};

void PrintTo(const Source& source, std::ostream* out) {
    *out << source.name;
}

template<Application (*open)(DesktopSession&, const QByteArray&)>
Application editor(DesktopSession& session) {
    const Application application = open(session, material.toUtf8());
    highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, material.toUtf8());
    return application;
}

QByteArray page() {
    return "<!DOCTYPE html><html><head><meta "
           "charset=\"utf-8\"><title>Page</title></head><body><p>" +
           material.toUtf8() + "</p></body></html>";
}

// The page has the keyboard after a click, the place of which makes no double click.
Application marked(DesktopSession& session, const Application& browser) {
    int clicks = 0;
    highlight(
        session,
        [&] {
            const QPoint corner = session.geometry(browser.window).bottomRight();
            session.click(corner - QPoint(60, 60 + 30 * (++clicks % 5)));
            session.key({"ctrl+a"});
        },
        material.toUtf8());
    return browser;
}

Application firefox(DesktopSession& session) {
    return marked(session, openFirefox(session, page()));
}

Application chromium(DesktopSession& session) {
    return marked(session, openChromium(session, page(), false));
}

// The material is one line, which wraps; a triple click takes it whole.
Application terminal(DesktopSession& session) {
    const Application xterm = openXterm(session, material.toUtf8() + "\n");
    const QPoint line = session.geometry(xterm.window).topLeft() + QPoint(6, 8);
    highlight(session, [&] { session.click(line, 3); }, material.toUtf8());
    return xterm;
}

class PanelProgramSources : public testing::TestWithParam<Source> {
  protected:
    // With all that a desktop has, for which one start must do.
    static void SetUpTestSuite() {
        s_desktop = std::make_unique<PanelProgram>();
        s_desktop->session.start("picom", "picom", {"--backend", "xrender"});
        s_desktop->session.start("tint2", "tint2");
    }
    static void TearDownTestSuite() { s_desktop.reset(); }

    static inline std::unique_ptr<PanelProgram> s_desktop;
};

TEST_P(PanelProgramSources, WhatIsHighlightedIsAnsweredAndLeftAsItWas) {
    PanelProgram& vorq = *s_desktop;
    DesktopSession& session = vorq.session;
    vorq.start();
    const qsizetype before = vorq.analysed().size();
    session.own("clipboard", "of the user");
    const Application source = GetParam().open(session);
    const QByteArray primary = session.selection("primary");
    ASSERT_EQ(session.activeWindow(), source.window);

    vorq.pressHotKey();
    vorq.waitForPanel();
    const QStringList entries = vorq.waitForReply(3);
    EXPECT_EQ(entries[1], "You: Attached: Text capture");
    EXPECT_THAT(entries[2].toStdString(), HasSubstr("A river carries silt from the mountains"));
    ASSERT_THAT(vorq.analysed(), SizeIs(before + 1));
    EXPECT_EQ(vorq.analysed().back(), material);

    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.selection("primary"), primary);
    vorq.dismissTo(source.window);
    EXPECT_EQ(session.selection("clipboard"), "of the user");
    EXPECT_EQ(session.selection("primary"), primary);
    ASSERT_GT(source.process, 0);
    ::kill(source.process, SIGKILL);
}

INSTANTIATE_TEST_SUITE_P(, PanelProgramSources,
                         testing::Values(Source{"mousepad", editor<openMousepad>},
                                         Source{"texteditor", editor<openTextEditor>},
                                         Source{"qt6", editor<openTextWindow>},
                                         Source{"writer", editor<openWriter>},
                                         Source{"firefox", firefox}, Source{"chromium", chromium},
                                         Source{"xterm", terminal}),
                         [](const testing::TestParamInfo<Source>& info) {
                             return std::string(info.param.name);
                         });

} // namespace
} // namespace vorq::desktop
