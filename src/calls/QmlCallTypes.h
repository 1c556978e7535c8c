#pragma once

#include "calls/ActiveCallBanner.h"
#include "calls/IncomingCallBanner.h"

#include <QtQml/qqml.h>

/// The names under which QML knows what the call panels show; those of the views are taken.
namespace brenvale {

struct IncomingCallInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::IncomingCallBanner)
    QML_NAMED_ELEMENT(IncomingCall)
    QML_UNCREATABLE("The program makes it.")
};

struct ActiveCallInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::ActiveCallBanner)
    QML_NAMED_ELEMENT(ActiveCall)
    QML_UNCREATABLE("The program makes it.")
};

} // namespace brenvale
