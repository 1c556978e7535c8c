#pragma once

#include "notifications/NotificationsTab.h"

#include <QtQml/qqml.h>

/// The name under which QML knows what the tab shows; that of the view is taken.
namespace brenvale {

struct NotificationsTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::NotificationsTab)
    QML_NAMED_ELEMENT(NotificationsState)
    QML_UNCREATABLE("The program makes it.")
};

} // namespace brenvale
