#include "platform/linux/KeyFile.h"

#include <QList>

namespace brenvale {

std::optional<QByteArray> keyFileValue(const QByteArray& text, const QByteArray& group,
                                       const QByteArray& key) {
    bool isInGroup = false;
    for (const auto& line : text.split('\n')) {
        const auto shown = line.trimmed();
        if (shown.startsWith('[')) {
            isInGroup = shown == group;
            continue;
        }
        const auto equals = shown.indexOf('=');
        if (!isInGroup || equals < 0 || shown.startsWith('#')) {
            continue;
        }
        auto name = shown.first(equals);
        if (const auto option = name.indexOf("[$"); option >= 0) {
            name.truncate(option);
        }
        if (name.trimmed() == key) {
            return shown.sliced(equals + 1).trimmed();
        }
    }
    return {};
}

} // namespace brenvale
