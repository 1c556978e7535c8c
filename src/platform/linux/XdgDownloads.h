#pragma once

#include "platform/Downloads.h"

namespace brenvale {

/// The download folder of the user's directories (xdg-user-dirs, freedesktop.org).
class XdgDownloads final : public Downloads {
public:
    [[nodiscard]] QString folder() const override;
};

} // namespace brenvale
