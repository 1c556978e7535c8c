#pragma once

#include <QString>

namespace brenvale {

struct FileTransferRecord;

/// The texts of a row of the transfer list, in the user's locale. Pure, all of them.

/// A size in units of a thousand: whole kilobytes, a tenth of a megabyte, a hundredth of what is larger.
[[nodiscard]] QString byteCountText(qint64 bytes);

/// "50%" of a fraction. A fraction that is not finite is fatal.
[[nodiscard]] QString progressText(double progress);

/// "Sent • 1.2 MB • 9:41" of a completed transfer.
[[nodiscard]] QString completionText(const FileTransferRecord& record);

} // namespace brenvale
