#pragma once

#include "platform/UserDefaults.h"

namespace brenvale {

/// The settings in brenvale/brenvale.conf below the user's configuration folder (XDG base directory
/// specification), an INI file with the keys in [General].
class SettingsDefaults final : public UserDefaults {
public:
    [[nodiscard]] qint64 integer(QStringView key) const override;
};

} // namespace brenvale
