#pragma once

#include <QUuid>

namespace brenvale {

/// A random identity (RFC 9562, version 4) for a row on this desktop. From a generator in memory: asking the
/// system for each one would cost more than all else that is done for a notification.
[[nodiscard]] QUuid makeRecordId();

} // namespace brenvale
