#include "shell/LaunchAtLoginManager.h"

#include "platform/Log.h"
#include "platform/LoginItem.h"
#include "platform/Platform.h"

namespace brenvale {

bool LaunchAtLoginManager::isEnabled(const Platform& platform) {
    return platform.loginItem.isEnabled();
}

void LaunchAtLoginManager::setEnabled(const Platform& platform, bool enabled) {
    const auto result = enabled ? platform.loginItem.registerItem() : platform.loginItem.unregisterItem();
    if (!result) {
        platform.log.line("LaunchAtLogin error: " + result.error().toUtf8());
    }
}

} // namespace brenvale
