#pragma once

#include <QString>

namespace brenvale::bench {

/// What the stages of a file's way cost one at a time, each on the very bytes that it meets there: seconds of
/// a processor for each gigabyte of the file. Each goes through a file of `mebibytes`.

struct IncomingStages {
    double unmask;
    double checkUtf8;
    double json;
    double base64;
};
/// With `escapesSlashes` every slash of the base64 comes as "\/", as Android writes JSON.
[[nodiscard]] IncomingStages incomingStages(int mebibytes, bool escapesSlashes);

/// Making a file of the bytes in `folder`.
[[nodiscard]] double writingToFile(int mebibytes, const QString& folder);

struct OutgoingStages {
    double read; ///< from the system's cache
    double encode;
};
[[nodiscard]] OutgoingStages outgoingStages(int mebibytes, const QString& folder);

} // namespace brenvale::bench
