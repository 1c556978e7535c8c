#pragma once

#include <QByteArrayView>

#include <chrono>

namespace brenvale {

/// Tells people `text` (UTF-8) as one line on standard error. What standard error does not take within
/// `patience` is dropped: nothing waits longer for whoever reads it. Any thread.
void complain(QByteArrayView text, std::chrono::milliseconds patience = {});

} // namespace brenvale
