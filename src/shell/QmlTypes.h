#pragma once

#include "shell/ClipboardTab.h"
#include "shell/SettingsTab.h"
#include "shell/SettingsView.h"

#include <QtQml/qqml.h>

/// The names under which QML knows the state that it shows; those of the tabs are taken by their views.
namespace brenvale {

struct SettingsViewInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::SettingsView)
    QML_NAMED_ELEMENT(SettingsView)
    QML_UNCREATABLE("The program makes it.")
};

struct ClipboardTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::ClipboardTab)
    QML_NAMED_ELEMENT(ClipboardState)
    QML_UNCREATABLE("The program makes it.")
};

struct SettingsTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::SettingsTab)
    QML_NAMED_ELEMENT(SettingsState)
    QML_UNCREATABLE("The program makes it.")
};

struct CountedListModelInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::CountedListModel)
    QML_ANONYMOUS
    QML_UNCREATABLE("A view has it.")
};

} // namespace brenvale
