#pragma once

namespace vorq {

class DesktopPlatform;

/// Takes Vorq off the machine for the user who runs it, and returns once they have seen what is
/// left, if anything is. Nothing else of the program may run any more: what still wrote something
/// would bring it back. Needs a QApplication.
void deleteProgram(DesktopPlatform& platform);

} // namespace vorq
