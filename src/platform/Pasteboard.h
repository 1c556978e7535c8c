#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace brenvale {

/// The desktop's clipboard. On main; no call waits for another program.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Takes the contents away and the ownership over.
    virtual void clearContents() = 0;

    /// Offers `text` as the contents.
    virtual void setString(const QString& text) = 0;

    /// Gets the contents as text; nothing where they are none, or are files alone, and where their owner does
    /// not give them in time.
    using TextAnswer = std::move_only_function<void(std::optional<QString> text)>;

    /// Reads the contents. `answer` is called once, on main, perhaps before the return.
    virtual void string(TextAnswer answer) = 0;
};

} // namespace brenvale
