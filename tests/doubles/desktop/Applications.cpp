#include "doubles/desktop/Applications.h"

#include <algorithm>

namespace vorq::desktop {

Application inFront(const DesktopSession& session, const QString& windowClass) {
    constexpr std::chrono::seconds slowStart(90);
    const DesktopSession::Window window = session.waitForWindow(windowClass, slowStart);
    session.activate(window);
    return {.window = window, .process = session.processOf(window)};
}

namespace {

Application openFile(DesktopSession& session, const QString& program, const QString& package,
                     const QString& windowClass, const QByteArray& text) {
    session.start(program, package, {session.write("document.txt", text)});
    return inFront(session, windowClass);
}

QStringList chromiumArguments(const DesktopSession& session) {
    return {"--no-sandbox",
            "--no-first-run",
            "--no-default-browser-check",
            "--disable-gpu",
            "--disable-dev-shm-usage",
            "--password-store=basic",
            "--disable-sync",
            "--disable-background-networking",
            "--user-data-dir=" + session.home() + "/chromium"};
}

// Gives its folder.
QString firefoxProfile(const DesktopSession& session) {
    session.write("firefox/user.js",
                  "user_pref('browser.shell.checkDefaultBrowser', false);\n"
                  "user_pref('browser.aboutwelcome.enabled', false);\n"
                  "user_pref('browser.startup.homepage_override.mstone', 'ignore');\n"
                  "user_pref('datareporting.policy.dataSubmissionEnabled', false);\n"
                  "user_pref('toolkit.telemetry.reportingpolicy.firstRun', false);\n"
                  "user_pref('browser.tabs.firefox-view', false);\n"
                  "user_pref('app.update.enabled', false);\n");
    return session.home() + "/firefox";
}

void makeDefault(const DesktopSession& session, const QString& id, const QString& command) {
    session.write(".local/share/applications/" + id + ".desktop",
                  "[Desktop Entry]\nType=Application\nName=" + id.toUtf8() +
                      "\nMimeType=x-scheme-handler/http;\nExec=" + command.toUtf8() + "\n");
    session.write(".config/mimeapps.list",
                  "[Default Applications]\nx-scheme-handler/http=" + id.toUtf8() + ".desktop\n");
}

} // namespace

Application openMousepad(DesktopSession& session, const QByteArray& text) {
    return openFile(session, "mousepad", "mousepad", "mousepad", text);
}

Application openTextEditor(DesktopSession& session, const QByteArray& text) {
    return openFile(session, "gnome-text-editor", "gnome-text-editor", "text-editor", text);
}

Application openFeatherPad(DesktopSession& session, const QByteArray& text) {
    return openFile(session, "featherpad", "featherpad", "featherpad", text);
}

Application openTextWindow(DesktopSession& session, const QByteArray& text) {
    return openFile(session, VORQ_TEXT_WINDOW, "of this build", "test_text_window", text);
}

Application openAccountList(DesktopSession& session, const QByteArray& password) {
    session.start(VORQ_ACCOUNT_LIST, "of this build", {QString::fromUtf8(password)});
    return inFront(session, "test_account_list");
}

Application openWriter(DesktopSession& session, const QByteArray& text) {
    QProcessEnvironment environment;
    environment.insert("SAL_USE_VCLPLUGIN", "gtk3");
    session.start("soffice", "libreoffice-writer libreoffice-gtk3",
                  {"--norestore", "--nologo", "--nofirststartwizard", "--writer",
                   session.write("document.txt", text)},
                  environment);
    return inFront(session, "libreoffice-writer");
}

Application openXterm(DesktopSession& session, const QByteArray& text) {
    const QString file = session.write("document.txt", text);
    session.start(
        "xterm", "xterm",
        {"-u8", "-geometry", "80x24+100+100", "-e", "sh", "-c", "cat \"$0\"; sleep 600", file});
    return inFront(session, "xterm");
}

Application openFirefox(DesktopSession& session, const QByteArray& html) {
    const QString page = session.write("page.html", html);
    session.start("firefox-esr", "firefox-esr",
                  {"--no-remote", "--profile", firefoxProfile(session), "file://" + page});
    const Application application = inFront(session, "firefox");
    return application;
}

Application openChromium(DesktopSession& session, const QByteArray& html, bool accessible) {
    QStringList arguments = chromiumArguments(session);
    if (accessible) arguments += "--force-renderer-accessibility";
    arguments += "file://" + session.write("page.html", html);
    session.start("chromium", "chromium", arguments);
    return inFront(session, "chromium");
}

void makeChromiumDefault(const DesktopSession& session) {
    makeDefault(session, "chromium",
                "chromium " + chromiumArguments(session).join(' ') +
                    " --force-renderer-accessibility %U");
}

void makeFirefoxDefault(const DesktopSession& session) {
    makeDefault(session, "firefox-esr",
                "firefox-esr --no-remote --profile " + firefoxProfile(session) + " %u");
}

Application openChromiumAt(DesktopSession& session, const QString& address) {
    session.start("chromium", "chromium",
                  chromiumArguments(session) +
                      QStringList{"--force-renderer-accessibility", address});
    return inFront(session, "chromium");
}

Application openChromiumWindow(DesktopSession& session, const QByteArray& html) {
    const std::vector<DesktopSession::Window> before = session.windows();
    const QStringList page{"--new-window", "file://" + session.write("second.html", html)};
    session.start("chromium", "chromium", chromiumArguments(session) + page);
    DesktopSession::Window added = 0;
    DesktopSession::waitUntil("one more window", [&] {
        for (const DesktopSession::Window window : session.windows())
            if (std::ranges::find(before, window) == before.end()) added = window;
        return added != 0;
    });
    session.activate(added);
    return {.window = added, .process = session.processOf(added)};
}

Application openFalkon(DesktopSession& session, const QByteArray& html) {
    QProcessEnvironment environment;
    environment.insert("QTWEBENGINE_DISABLE_SANDBOX", "1");
    session.start("falkon", "falkon", {"file://" + session.write("page.html", html)}, environment);
    return inFront(session, "falkon");
}

Application openEpiphany(DesktopSession& session, const QByteArray& html) {
    QProcessEnvironment environment;
    environment.insert("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS", "1");
    session.start(
        "epiphany", "epiphany-browser",
        {"--profile=" + session.home() + "/epiphany", "file://" + session.write("page.html", html)},
        environment);
    return inFront(session, "epiphany");
}

} // namespace vorq::desktop
