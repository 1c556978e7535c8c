#pragma once

#include "platform/linux/scripts/BackgroundWork.h"

namespace brenvale {

/// Locks the session: asks systemd-logind, or the desktop's own screen saver where that does not. `done` gets
/// nothing, or why nobody would; a service that does not answer within seconds is passed over. On main; never
/// waits.
void lockScreen(ScriptDone done);

/// Has systemd-logind suspend the computer, without a question to the user. As above.
void sleepComputer(ScriptDone done);

} // namespace brenvale
