#pragma once

#include "doubles/desktop/DesktopSession.h"

namespace vorq::desktop {

/// An application that shows a text and is in front, with its window and the process that owns it,
/// which need not be the one that was started.
struct Application {
    DesktopSession::Window window = 0;
    std::int32_t process = 0;
};

/// Waits for a window of the class, however slow its application starts, and brings it to the
/// front.
Application inFront(const DesktopSession& session, const QString& windowClass);

/// These write the text to a file and open it: GTK 3, GTK 4, Qt 5, Qt 6, and LibreOffice.
Application openMousepad(DesktopSession& session, const QByteArray& text);
Application openTextEditor(DesktopSession& session, const QByteArray& text);
Application openFeatherPad(DesktopSession& session, const QByteArray& text);
/// The next field after the text holds a password.
Application openTextWindow(DesktopSession& session, const QByteArray& text);
Application openWriter(DesktopSession& session, const QByteArray& text);

/// A list whose one entry is copied as the password, marked as a secret. Its name does not tell.
Application openAccountList(DesktopSession& session, const QByteArray& password);

/// A terminal that prints the text.
Application openXterm(DesktopSession& session, const QByteArray& text);

/// These show a page of HTML, with the pointer's focus on the page.
Application openFirefox(DesktopSession& session, const QByteArray& html);
/// Without accessibility it tells nothing of its pages.
Application openChromium(DesktopSession& session, const QByteArray& html, bool accessible);

/// From now on programs of the session open web addresses in the browser, which tells accessibility
/// of its pages.
void makeChromiumDefault(const DesktopSession& session);
void makeFirefoxDefault(const DesktopSession& session);

/// The same at an address, with accessibility.
Application openChromiumAt(DesktopSession& session, const QString& address);

/// One more window of the Chromium that is open, in front.
Application openChromiumWindow(DesktopSession& session, const QByteArray& html);
/// It tells accessibility nothing of its pages.
Application openFalkon(DesktopSession& session, const QByteArray& html);
/// The browser of GNOME, which draws by WebKit.
Application openEpiphany(DesktopSession& session, const QByteArray& html);

} // namespace vorq::desktop
