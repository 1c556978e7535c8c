#pragma once

#include <QString>

namespace brenvale {

/// What outlives the process of the user's answer to the desktop's consent dialog: the token by which the
/// desktop knows a consent again, and whether the last answer was a refusal. Two small files below the user's
/// state folder (XDG base directory specification). Neither a file nor a folder that is not what it should be
/// holds anybody up; what cannot be kept is asked again. One thread.
class ConsentMemory {
public:
    /// Empty where there is none.
    [[nodiscard]] static QString token();
    static void keepToken(const QString& token);

    [[nodiscard]] static bool wasRefused();
    static void keepRefusal(bool isRefused);
};

} // namespace brenvale
