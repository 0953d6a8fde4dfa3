#pragma once

#include "doubles/desktop/Applications.h"

namespace vorq::desktop {

/// Applications of further toolkits that show a text of one or more lines: KDE (a terminal and an
/// editor), Emacs, a viewer of PDF, Swing and Tk.
Application openKonsole(DesktopSession& session, const QByteArray& text);
Application openKWrite(DesktopSession& session, const QByteArray& text);
Application openEmacs(DesktopSession& session, const QByteArray& text);
/// The text is one line of ASCII without brackets.
Application openEvince(DesktopSession& session, const QByteArray& text);
Application openSwing(DesktopSession& session, const QByteArray& text);
/// A field for a password that has the keyboard and holds it.
Application openSwingPassword(DesktopSession& session, const QByteArray& password);
Application openTk(DesktopSession& session, const QByteArray& text);

/// Shows a presentation whose one slide has a box with a paragraph for each line.
Application openImpress(DesktopSession& session, const QByteArray& text);

/// Shows a sheet whose first row has a cell for each stretch between tabs.
Application openCalc(DesktopSession& session, const QByteArray& text);

} // namespace vorq::desktop
