#pragma once

#include <QByteArrayView>

namespace brenvale {

/// Tells people `text` (UTF-8) as one line on standard error. Dropped where standard error takes nothing at
/// the moment: nothing waits for whoever reads it. Any thread.
void complain(QByteArrayView text);

} // namespace brenvale
