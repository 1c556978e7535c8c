#pragma once

#include "messages/CallsTab.h"
#include "messages/SendSmsTab.h"
#include "messages/Sims.h"

#include <QtQml/qqml.h>

/// The names under which QML knows what the tabs show; those of the views are taken.
namespace brenvale {

struct CallsTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::CallsTab)
    QML_NAMED_ELEMENT(CallsState)
    QML_UNCREATABLE("The program makes it.")
};

struct SendSmsTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::SendSmsTab)
    QML_NAMED_ELEMENT(SendSmsState)
    QML_UNCREATABLE("The program makes it.")
};

struct SimsInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::Sims)
    QML_NAMED_ELEMENT(Sims)
    QML_UNCREATABLE("The program makes it.")
};

} // namespace brenvale
