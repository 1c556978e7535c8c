#pragma once

#include <QString>

namespace brenvale {

/// The desktop's clipboard. On main.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Takes the contents away and the ownership over.
    virtual void clearContents() = 0;

    /// Offers `text` as the contents.
    virtual void setString(const QString& text) = 0;
};

} // namespace brenvale
