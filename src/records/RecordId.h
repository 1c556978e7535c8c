#pragma once

#include <QString>
#include <QUuid>

namespace brenvale {

/// A random identity (RFC 9562, version 4) for a row on this desktop. From a generator in memory: asking the
/// system for each one would cost more than all else that is done for a notification.
[[nodiscard]] QUuid makeRecordId();

/// An identity as text, in capitals and without brackets. Pure.
[[nodiscard]] QString recordIdText(const QUuid& id);

} // namespace brenvale
