#include "platform/linux/NotificationSwitch.h"

#include "platform/linux/ChildPrograms.h"
#include "platform/linux/CurrentDesktop.h"
#include "platform/linux/KeyFile.h"
#include "transfer/LocalFile.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <chrono>

namespace brenvale {

namespace {

using Answer = std::function<void(bool isOff)>;

constexpr std::chrono::seconds patience{5};

bool isOffInPlasma() {
    const auto files =
        QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, QStringLiteral("plasmanotifyrc"));
    for (const auto& path : files) { // the user's own first
        if (const auto file = openFile(path)) {
            if (const auto isOff = plasmaSwitchesOff((*file)->readAll(), "org.brenvale.Brenvale")) {
                return *isOff;
            }
        }
    }
    return false;
}

/// GNOME's settings are asked by its own command: its library would keep a thread of its own for ever.
void askGnome(const ChildPrograms& programs, Answer answer) {
    auto* command = new QProcess;
    programs.prepare(*command);
    auto* limit = new QTimer(command);
    limit->setSingleShot(true);
    QObject::connect(limit, &QTimer::timeout, command, &QProcess::kill);
    const auto finish = [command, answer = std::move(answer)] {
        answer(command->readAllStandardOutput().trimmed() == "false");
        command->deleteLater();
    };
    QObject::connect(command, &QProcess::finished, command, finish);
    QObject::connect(command, &QProcess::errorOccurred, command, [finish](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            finish();
        }
    });
    limit->start(patience);
    command->start(
        QStringLiteral("gsettings"),
        {QStringLiteral("get"),
         QStringLiteral(
             "org.gnome.desktop.notifications.application:/org/gnome/desktop/notifications/application/"
             "org-brenvale-brenvale/"),
         QStringLiteral("enable")});
}

} // namespace

std::optional<bool> plasmaSwitchesOff(const QByteArray& settings, const QByteArray& application) {
    const auto value = keyFileValue(settings, "[Applications][" + application + "]", "ShowPopups");
    return value ? std::optional(value->toLower() == "false") : std::nullopt;
}

void NotificationSwitch::isOff(const ChildPrograms& programs, std::function<void(bool isOff)> answer) {
    const auto desktop = currentDesktop();
    if (desktop.contains(QStringLiteral("KDE"))) {
        answer(isOffInPlasma());
    } else if (desktop.contains(QStringLiteral("GNOME"))) {
        askGnome(programs, std::move(answer));
    } else {
        answer(false);
    }
}

} // namespace brenvale
