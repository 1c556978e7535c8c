#pragma once

#include <QString>

namespace brenvale {

/// Whether a notification's title is a bare phone number, as apps send it that know the sender only by
/// number: a leading plus sign is enough, else at least 7 characters of which more than four in five are
/// numbers of any script. Characters are what a reader sees as one. Pure.
[[nodiscard]] bool looksLikePhoneNumber(const QString& text);

} // namespace brenvale
