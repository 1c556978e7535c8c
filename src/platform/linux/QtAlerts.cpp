#include "platform/linux/QtAlerts.h"

#include "platform/StandardError.h"
#include "platform/linux/DialogLook.h"
#include "platform/linux/WindowActivation.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QWindow>

#include <memory>

namespace brenvale {

namespace {

bool hasDisplay() {
    return QGuiApplication::platformName() != u"offscreen";
}

void printLine(const Alert& alert) {
    complain((alert.messageText + QStringLiteral(": ") + alert.informativeText.simplified()).toUtf8());
}

/// A heading over text of a comfortable width; the toolkit's own layout is narrow and has no heading.
void arrange(const QMessageBox& box) {
    constexpr int textWidth = 400;
    if (auto* heading = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        auto font = heading->font();
        font.setWeight(QFont::DemiBold);
        heading->setFont(font);
    }
    if (auto* text = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        text->setMinimumWidth(textWidth);
    }
}

QMessageBox* makeBox(const Alert& alert) {
    auto* box = new QMessageBox;
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowTitle(QStringLiteral("Brenvale"));
    useProgramIcon(*box);
    box->setIcon(alert.style == Alert::Style::warning ? QMessageBox::Warning : QMessageBox::Information);
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.messageText);
    box->setInformativeText(alert.informativeText);
    arrange(*box);
    return box;
}

/// Adds the buttons and gives them in their order; desktops change that and the titles too.
QList<QAbstractButton*> addButtons(QMessageBox& box, const QStringList& titles) {
    QList<QAbstractButton*> buttons;
    for (const auto& title : titles) {
        auto* button =
            box.addButton(title, buttons.isEmpty() ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
        if (buttons.isEmpty()) {
            box.setDefaultButton(button);
            makeProminent(*button);
        } else {
            makePlain(*button);
        }
        box.setEscapeButton(button);
        buttons.append(button);
    }
    return buttons;
}

int lastButtonReturn(const Alert& alert) {
    return Alert::firstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
}

} // namespace

void QtAlerts::runModal(const Alert& alert, Answer answer) {
    if (!hasDisplay()) {
        printLine(alert);
        answer(lastButtonReturn(alert));
        return;
    }
    auto* box = makeBox(alert);
    const auto buttons = addButtons(*box, alert.buttons);
    QObject::connect(box, &QMessageBox::finished, box,
                     [box, buttons, answer = std::make_shared<Answer>(std::move(answer))] {
                         const auto clicked = buttons.indexOf(box->clickedButton());
                         const auto index = clicked < 0 ? buttons.size() - 1 : clicked;
                         (*answer)(Alert::firstButtonReturn + static_cast<int>(index));
                     });
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
    activateWindowForUser(*box->windowHandle());
}

} // namespace brenvale
