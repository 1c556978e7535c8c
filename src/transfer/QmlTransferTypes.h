#pragma once

#include "transfer/FileDropTab.h"

#include <QtQml/qqml.h>

/// The name under which QML knows what the tab shows; that of the view is taken.
namespace brenvale {

struct FileDropTabInQml {
    Q_GADGET
    QML_FOREIGN(brenvale::FileDropTab)
    QML_NAMED_ELEMENT(FileDropState)
    QML_UNCREATABLE("The program makes it.")
};

} // namespace brenvale
