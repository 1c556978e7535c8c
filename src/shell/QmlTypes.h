#pragma once

#include "shell/SettingsView.h"

#include <QtQml/qqml.h>

/// The names under which QML knows the state that it shows.
namespace brenvale {

struct SettingsViewInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::SettingsView)
    QML_NAMED_ELEMENT(SettingsView)
    QML_UNCREATABLE("The program makes it.")
};

struct CountedListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::CountedListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct NotifListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::NotifListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct ClipboardListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::ClipboardListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct FileTransferListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::FileTransferListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct ConversationListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::ConversationListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct MessageListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::MessageListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

struct CallListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::CallListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

} // namespace brenvale
