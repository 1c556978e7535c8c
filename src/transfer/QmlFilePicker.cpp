#include "transfer/QmlFilePicker.h"

#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QWindow>

namespace brenvale {

void FilePicker::open(SettingsView* view) {
    if (!dialog_.isNull()) {
        dialog_->raise();
        dialog_->activateWindow();
        return;
    }
    auto* dialog = new QFileDialog; // it deletes itself
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Send Files"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setDirectory(QDir::homePath());
    // Not every kind of dialog tells of its files by a signal; all of them have them when they are accepted.
    connect(dialog, &QDialog::accepted, view, [dialog, view] { view->sendFiles(dialog->selectedUrls()); });
    if (auto* window = QGuiApplication::focusWindow()) {
        (void)dialog->winId(); // makes the window that is to stand before ours
        dialog->windowHandle()->setTransientParent(window);
    }
    dialog->setModal(false);
    dialog->show();
    dialog_ = dialog;
}

} // namespace brenvale
