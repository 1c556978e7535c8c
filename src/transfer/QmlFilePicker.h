#pragma once

#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class QFileDialog;

namespace brenvale {

/// The desktop's own picker for files to send. On main.
class FilePicker final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;
    ~FilePicker() override;

    /// Shows the picker and returns; one that is open comes to the front.
    Q_INVOKABLE void open();

signals:
    /// The user took these, in the picker's order; never none.
    void picked(const QList<QUrl>& files);

private:
    QPointer<QFileDialog> dialog_; ///< deletes itself when it closes
};

} // namespace brenvale
