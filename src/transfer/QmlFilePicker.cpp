#include "transfer/QmlFilePicker.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace brenvale {

namespace {

constexpr QLatin1String dialogName("filesToSend");

/// It outlives the window that asked for it, and so whatever that remembers.
QWidget* openDialog() {
    const auto widgets = QApplication::topLevelWidgets();
    const auto dialog = std::ranges::find_if(widgets, [](const QWidget* widget) {
        return widget->isVisible() && widget->objectName() == dialogName;
    });
    return dialog == widgets.end() ? nullptr : *dialog;
}

} // namespace

void FilePicker::open(FileDropTab* tab) {
    if (auto* dialog = openDialog()) {
        dialog->raise();
        dialog->activateWindow();
        return;
    }
    auto* dialog = new QFileDialog; // it deletes itself
    dialog->setObjectName(dialogName);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(QStringLiteral("Send Files"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setDirectory(QDir::homePath());
    // Not every kind of dialog tells of its files by a signal; all of them have them when they are accepted.
    QObject::connect(dialog, &QDialog::accepted, tab,
                     [dialog, tab] { tab->sendFiles(dialog->selectedUrls()); });
    if (auto* window = QGuiApplication::focusWindow()) {
        (void)dialog->winId(); // makes the window that is to stand before ours
        dialog->windowHandle()->setTransientParent(window);
    }
    dialog->setModal(false);
    dialog->show();
}

} // namespace brenvale
