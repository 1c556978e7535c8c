#pragma once

#include "remote/RemoteControlTab.h"

#include <QtQml/qqml.h>

/// The name under which QML knows what the tab shows; that of the view is taken.
namespace brenvale {

struct RemoteControlTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::RemoteControlTab)
    QML_NAMED_ELEMENT(RemoteControlState)
    QML_UNCREATABLE("The program makes it.")
};

} // namespace brenvale
