#pragma once

#include <QStringView>

namespace brenvale {

/// The category of the phone's notifications: they can be answered.
inline constexpr QStringView replyCategory = u"REPLY_CATEGORY";

} // namespace brenvale
