#pragma once

#include <QString>
#include <QStringList>

namespace brenvale {

/// Collects what QML complains about in this process: a binding that is dead or ambiguous, a component that
/// is not made. All that is logged is written to standard error as well. On main.
class QmlWarnings {
public:
    /// From now on.
    static void collect();

    /// Those since the last call.
    [[nodiscard]] static QStringList take();
};

} // namespace brenvale
