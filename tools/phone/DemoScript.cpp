#include "DemoScript.h"

#include <QDateTime>

namespace brenvale::phone {
namespace {

using namespace std::chrono_literals;

DemoStep notificationStep(std::chrono::milliseconds pause, const Notification& notification) {
    return {.pause = pause, .perform = [notification](DemoPhone&) {
                Notification timed = notification;
                timed.time = static_cast<double>(QDateTime::currentSecsSinceEpoch());
                return Reaction{.lines = {QStringLiteral("notification of %1: %2: %3")
                                              .arg(timed.app, timed.title, timed.body)},
                                .messages = {notificationMessage(timed)}};
            }};
}

DemoStep messageStep(std::chrono::milliseconds pause, const QString& line,
                     const QList<QByteArray>& messages) {
    return {.pause = pause, .perform = [line, messages](DemoPhone&) {
                return Reaction{.lines = {line}, .messages = messages};
            }};
}

// Many phones tell of an SMS twice: by the contact's name, and a moment later by the bare number.
QList<DemoStep> twiceToldSms() {
    const Person& jonas = demoPeople().at(1);
    const QString body = QStringLiteral("Die Halle ist wieder frei, wir spielen um 19 Uhr! 🏀");
    return {notificationStep(2500ms, {.app = QStringLiteral("Messages"),
                                      .title = jonas.name,
                                      .body = body,
                                      .key = QStringLiteral("0|messages|41")}),
            notificationStep(900ms, {.app = QStringLiteral("Messages"),
                                     .title = jonas.number,
                                     .body = body,
                                     .key = QStringLiteral("0|messages|42")})};
}

DemoStep fileStep() {
    const QString name = QStringLiteral("Holiday plan.txt");
    const QByteArray data = demoFile();
    return messageStep(3000ms, QStringLiteral("sends the file \"%1\" of %2 bytes").arg(name).arg(data.size()),
                       {fileStartMessage(name, data.size()), fileChunkMessage(name, data, true)});
}

} // namespace

QList<DemoStep> demoScript() {
    QList<DemoStep> script{
        notificationStep(2000ms, {.app = QStringLiteral("Calendar"),
                                  .title = QStringLiteral("Stand-up in 10 minutes"),
                                  .body = QStringLiteral("Room 3, with يوسف and Lucía"),
                                  .key = QStringLiteral("0|calendar|7")}),
        messageStep(2000ms, QStringLiteral("copies a text"),
                    {clipboardMessage(QStringLiteral("12 rue du Canal, 75010 Paris\n“third floor, left”"))}),
        notificationStep(2000ms, {.app = QStringLiteral("Mail"),
                                  .title = QStringLiteral("Night train booking"),
                                  .body = QStringLiteral("Coach 12, seats 41 & 42 <window>\nDeparture 21:36"),
                                  .key = QStringLiteral("0|mail|1209")}),
    };
    script += twiceToldSms();
    script += DemoStep{.pause = 3000ms,
                       .perform = [](DemoPhone& phone) { return phone.ring(demoPeople().at(0)); },
                       .endsWithCall = true};
    script += fileStep();
    script +=
        DemoStep{.pause = 2500ms, .perform = [](DemoPhone& phone) {
                     return phone.receiveSms(demoPeople().at(4), QStringLiteral("נתראה בתחנה בשמונה 🚆"));
                 }};
    script += messageStep(2500ms, QStringLiteral("the battery runs low: 19 %"), {batteryMessage(19, false)});
    script += messageStep(3500ms, QStringLiteral("is charging: 20 %"), {batteryMessage(20, true)});
    return script;
}

} // namespace brenvale::phone
