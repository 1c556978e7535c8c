#include "transfer/QmlFilePicker.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QWindow>

namespace brenvale {

FilePicker::~FilePicker() {
    delete dialog_;
}

void FilePicker::open() {
    if (dialog_) {
        dialog_->raise();
        dialog_->activateWindow();
        return;
    }
    dialog_ = new QFileDialog;
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    dialog_->setWindowTitle(QStringLiteral("Send Files"));
    dialog_->setFileMode(QFileDialog::ExistingFiles);
    connect(dialog_, &QFileDialog::urlsSelected, this, &FilePicker::picked);
    if (auto* window = QGuiApplication::focusWindow()) {
        (void)dialog_->winId(); // makes the window that is to stand before ours
        dialog_->windowHandle()->setTransientParent(window);
    }
    dialog_->open();
}

} // namespace brenvale
