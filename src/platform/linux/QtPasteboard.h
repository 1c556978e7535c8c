#pragma once

#include "platform/Pasteboard.h"

namespace brenvale {

/// The clipboard by the toolkit.
class QtPasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void setString(const QString& text) override;
    void string(TextAnswer answer) override;
};

} // namespace brenvale
