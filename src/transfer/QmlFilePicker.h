#pragma once

#include "transfer/FileDropTab.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brenvale {

/// The desktop's own picker for files to send. On main.
class FilePicker final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Shows the picker and returns; one that is open comes to the front. What the user takes is sent by
    /// `tab`, in the picker's order, whatever the window shows by then.
    Q_INVOKABLE static void open(brenvale::FileDropTab* tab);
};

} // namespace brenvale
