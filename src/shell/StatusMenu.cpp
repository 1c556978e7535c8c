#include "link/WebSocketServer.h"
#include "platform/DispatchQueue.h"
#include "platform/Platform.h"
#include "platform/StatusItem.h"
#include "shell/AppDelegate.h"
#include "shell/SendClipboard.h"
#include "shell/Tab.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace brenvale {

namespace {

constexpr int statusTag = 1;

/// A row that can be chosen, and the name under which other programs ask for the same.
struct Command {
    QStringView title;
    QStringView key;
    QStringView name;
    int tab = -1; ///< to open; -1 for the two that open none
};

constexpr Command sendClipboardCommand{u"Send Clipboard", u"v", u"send-clipboard"};
constexpr Command quitCommand{u"Quit Brenvale", u"q", u"quit"};
constexpr std::array commands{
    Command{u"Call…", u"c", u"call", Tab::call},
    Command{u"Send SMS…", u"s", u"sms", Tab::sms},
    Command{u"File Drop…", u"f", u"file-drop", Tab::fileDrop},
    Command{u"Notifications…", u"y", u"notifications", Tab::notifications},
    Command{u"Remote Control…", u"r", u"remote", Tab::remote},
    sendClipboardCommand,
    Command{u"Clipboard History…", u"h", u"clipboard", Tab::clipboard},
    Command{u"Settings…", u",", u"settings", Tab::settings},
    Command{u"Info…", u"i", u"info", Tab::info},
    quitCommand,
};

MenuItem separator() {
    return {.isSeparator = true};
}

} // namespace

void AppDelegate::buildMenu() {
    std::vector<MenuItem> rows{{.title = QStringLiteral("Brenvale")},
                               separator(),
                               {.title = QStringLiteral("Server: starting…"), .tag = statusTag},
                               separator()};
    for (const auto& command : commands) {
        if (command.name == quitCommand.name) {
            rows.push_back(separator());
        }
        rows.push_back({.title = command.title.toString(),
                        .keyEquivalent = command.key.toString(),
                        .action = [this, name = command.name.toString()] {
                            activateAction(name);
                        }});
    }
    platform_.statusItem.setMenu(std::move(rows));
    server_.onStatusChange = [this](const QString& status) {
        main_.async([this, status] {
            platform_.statusItem.setTitle(statusTag, QStringLiteral("Server: ") + status);
        });
    };
}

void AppDelegate::activateAction(const QString& name) {
    const auto* const command = std::ranges::find(commands, QStringView(name), &Command::name);
    if (command == commands.end()) {
        callWindows_->activateAction(name);
    } else if (command->tab >= 0) {
        showSettings(command->tab);
    } else if (command->name == sendClipboardCommand.name) {
        sendClipboard(platform_.pasteboard, server_);
    } else {
        QCoreApplication::quit();
    }
}

} // namespace brenvale
