#include "link/WireText.h"

#include "link/Json.h"

namespace brenvale {

QByteArray connectedGreeting(const QString& deviceName) {
    return writeJson({{QStringLiteral("action"), QStringLiteral("connected")},
                      {QStringLiteral("deviceName"), deviceName}});
}

} // namespace brenvale
