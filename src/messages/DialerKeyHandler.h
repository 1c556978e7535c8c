#pragma once

#include <QString>

#include <functional>

namespace brenvale {

/// What the dial pad does with the keyboard. A plain value, made for one key.
struct DialerKeyHandler {
    QString& dialpadNumber;
    bool isCallActive = false;
    std::function<void()> onReturn;

    /// Acts on one press or repeat of `key`, a `Qt::Key` that types `characters`; false where the key is none
    /// of the pad's.
    bool handle(int key, const QString& characters);
};

} // namespace brenvale
