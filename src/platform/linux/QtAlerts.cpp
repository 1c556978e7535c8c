#include "platform/linux/QtAlerts.h"

#include "platform/linux/WindowActivation.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <cstdio>
#include <memory>

namespace brenvale {

namespace {

bool hasDisplay() {
    return QGuiApplication::platformName() != u"offscreen";
}

void printLine(const Alert& alert) {
    const auto line = alert.messageText + QStringLiteral(": ") + alert.informativeText.simplified() + u'\n';
    std::fputs(line.toUtf8().constData(), stderr);
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
    box->setWindowTitle(QGuiApplication::applicationDisplayName());
    box->setIcon(alert.style == Alert::Style::warning ? QMessageBox::Warning : QMessageBox::Information);
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.messageText);
    box->setInformativeText(alert.informativeText);
    arrange(*box);
    for (const auto& title : alert.buttons) {
        const bool isFirst = box->buttons().isEmpty();
        auto* button = box->addButton(title, isFirst ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
        if (isFirst) {
            box->setDefaultButton(button);
        }
        box->setEscapeButton(button);
    }
    return box;
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
    QObject::connect(box, &QMessageBox::finished, box,
                     [box, alert, answer = std::make_shared<Answer>(std::move(answer))] {
                         const auto* clicked = box->clickedButton();
                         const auto index = clicked ? alert.buttons.indexOf(clicked->text()) : -1;
                         (*answer)(index < 0 ? lastButtonReturn(alert)
                                             : Alert::firstButtonReturn + static_cast<int>(index));
                     });
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
    activateWindowForUser(*box);
}

} // namespace brenvale
