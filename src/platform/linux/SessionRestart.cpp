#include "platform/linux/SessionRestart.h"

#include <QGuiApplication>
#include <QSessionManager>

namespace brenvale {

void comeBackInBackground(QGuiApplication& application) {
    const auto describe = [](QSessionManager& manager) {
        auto command = manager.restartCommand(); // with the session's own name for this program
        if (!command.isEmpty()) {
            command.front() = QCoreApplication::applicationFilePath();
        }
        command.removeAll(QStringLiteral("--background"));
        command.append(QStringLiteral("--background"));
        manager.setRestartCommand(command);
    };
    QObject::connect(&application, &QGuiApplication::saveStateRequest, &application, describe,
                     Qt::DirectConnection);
}

} // namespace brenvale
