#pragma once

#include "platform/linux/input/PostedEvents.h"

#include <QString>
#include <QVariantList>

#include <chrono>
#include <set>
#include <variant>
#include <vector>

namespace brenvale {

/// One call of the portal: a method that notifies it of an event, and what follows the session and the
/// options.
struct PortalNotify {
    QString method;
    QVariantList values;

    friend bool operator==(const PortalNotify&, const PortalNotify&) = default;
};

struct PortalPause {
    std::chrono::milliseconds time{};

    friend bool operator==(const PortalPause&, const PortalPause&) = default;
};

/// A text that goes by the clipboard.
struct PortalPaste {
    QString text;

    friend bool operator==(const PortalPaste&, const PortalPaste&) = default;
};

using PortalStep = std::variant<PortalNotify, PortalPause, PortalPaste>;
using PortalSteps = std::vector<PortalStep>;

/// What brings `event` about. Keys go by their place on the keyboard, so that a shortcut works whatever the
/// layout; a text by its characters if all of them are among `keysyms`, which is what every layout of the
/// user's has, else by the clipboard: the desktop drops what the active layout lacks without a word. Pure.
[[nodiscard]] PortalSteps portalStepsFor(const PostedEvent& event, const std::set<quint32>& keysyms);

/// Types `text` character by character, whatever the desktop makes of it. Pure.
[[nodiscard]] PortalSteps typingSteps(const QString& text);

/// Has the program with the keyboard paste: the shortcut that holds in every layout, in text boxes and in
/// terminals. Pure.
[[nodiscard]] PortalSteps pastingSteps();

/// What the first keys may follow: until a key was pressed the desktop may know no keyboard. Pure.
[[nodiscard]] PortalSteps openingSteps(bool followsDialog);

} // namespace brenvale
