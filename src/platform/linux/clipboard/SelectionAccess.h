#pragma once

#include "platform/linux/clipboard/ClipboardContents.h"

#include <functional>
#include <optional>

namespace brenvale {

/// A desktop's way to own its selections, and to read what other programs own, without the focus. On the
/// clipboard's thread; no call waits for another program, and every answer comes, once, perhaps before the
/// return: an owner that does not answer has nothing. What is owned here is read from memory.
class SelectionAccess {
public:
    using Formats = std::move_only_function<void(QByteArrayList formats)>;
    using Bytes = std::move_only_function<void(std::optional<QByteArray> bytes)>;

    virtual ~SelectionAccess() = default;

    /// Takes the selection over with `contents`; without any format, takes it away from whoever has it.
    virtual void own(Selection selection, ClipboardContents contents) = 0;

    /// What we own; null where another program has the selection, or none.
    [[nodiscard]] virtual const ClipboardContents* owned(Selection selection) const = 0;

    /// The formats in which the present owner gives its contents; none where there is no owner.
    virtual void readFormats(Selection selection, Formats answer) = 0;

    /// The contents of the present owner in one of these formats.
    virtual void read(Selection selection, const QByteArray& format, Bytes answer) = 0;

    /// Answers when all that `own` has asked for holds on the desktop.
    virtual void settle(std::move_only_function<void()> answer) = 0;

    /// Gives what we own to a program that keeps it beyond our end, where the desktop has one. The answer
    /// comes when nothing is left to be done.
    virtual void saveBeforeEnd(std::move_only_function<void()> answer) { answer(); }
};

} // namespace brenvale
