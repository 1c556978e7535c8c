#pragma once

#include <QString>

#include <optional>

namespace brenvale {

/// The desktop's clipboard. On main.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Takes the contents away and the ownership over.
    virtual void clearContents() = 0;

    /// Offers `text` as the contents.
    virtual void setString(const QString& text) = 0;

    /// The contents as text; nothing where they are none.
    [[nodiscard]] virtual std::optional<QString> string() const = 0;
};

} // namespace brenvale
