#include "fakes/QmlWarnings.h"

#include <QtGlobal>

#include <utility>

namespace brenvale {

namespace {

/// The toolkit's handler is a plain function, and so is ours.
struct Collected {
    QtMessageHandler next = nullptr;
    QStringList warnings;
};

Collected& collected() {
    static Collected all;
    return all;
}

bool isOfQml(const QMessageLogContext& context, const QString& text) {
    const QLatin1String category(context.category == nullptr ? "" : context.category);
    return category.startsWith(QLatin1String("qml")) || category.startsWith(QLatin1String("qt.qml")) ||
           category.startsWith(QLatin1String("qt.quick")) || text.contains(QStringLiteral("qrc:")) ||
           text.contains(QStringLiteral("QQml")) || text.contains(QStringLiteral("QQuick")) ||
           text.startsWith(QStringLiteral("Scenegraph"));
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    auto& all = collected();
    if (type != QtDebugMsg && type != QtInfoMsg && isOfQml(context, text)) {
        all.warnings.append(text);
    }
    all.next(type, context, text);
}

} // namespace

void QmlWarnings::collect() {
    collected().next = qInstallMessageHandler(handle);
}

QStringList QmlWarnings::take() {
    return std::exchange(collected().warnings, {});
}

} // namespace brenvale
