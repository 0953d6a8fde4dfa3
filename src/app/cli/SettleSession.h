#pragma once

#include "platform/Clock.h"

namespace vorq {

class SessionTokens;

/// Runs the event loop until no refresh of the session is under way, but no longer than the limit.
/// For a program that is about to end: a refresh has spent the old token already, and its new one
/// must not be lost.
void settleSession(SessionTokens& tokens, Clock& clock, Clock::Duration limit);

/// Lets tasks that were stopped with their owners run to their ends, and waits some seconds for
/// their work on other threads. Comes last before the application object goes.
void unwindTasks();

} // namespace vorq
