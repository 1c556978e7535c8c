#pragma once

#include "platform/Pasteboard.h"

namespace brenvale {

/// The clipboard of the application's display.
class QtPasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void setString(const QString& text) override;
    [[nodiscard]] std::optional<QString> string() const override;
};

} // namespace brenvale
