#include "SampleStates.h"

#include "DemoData.h"
#include "PhoneMessages.h"
#include "records/FileTransferRecord.h"

#include <QDateTime>

namespace brenvale {

namespace {

const QString longName =
    QStringLiteral("Bartholomäus Maximilian von Hohenstein-Wittelsbach zu Neuenburg an der Donau");
const QString longText = QStringLiteral(
    "The committee has read your letter of the third of this month and would like to meet you at your "
    "earliest "
    "convenience, either in the old town hall or, should the weather allow, in the garden behind it. "
    "https://example.org/a/very/long/address/without/any/place/to/break/it/apart/in/"
    "sight?and=more&and=more ");

void receive(TestView& test, const QByteArray& message) {
    test.receive(std::string_view(message.constData(), static_cast<std::size_t>(message.size())));
}

void notify(TestView& test, const QString& app, const QString& title, const QString& body,
            double secondsAgo) {
    const auto now = static_cast<double>(QDateTime::currentSecsSinceEpoch());
    receive(test,
            phone::notificationMessage({.app = app, .title = title, .body = body, .time = now - secondsAgo}));
}

void transfer(TestView& test, const QString& name, qint64 size, bool isOutgoing, double progress) {
    FileTransferRecord record;
    record.id = QUuid::createUuid();
    record.fileName = name;
    record.fileSize = size;
    record.date = QDateTime::currentDateTime();
    record.isOutgoing = isOutgoing;
    record.progress = progress;
    record.isCompleted = progress >= 1;
    if (isOutgoing || record.isCompleted) {
        record.url = QUrl::fromLocalFile(QStringLiteral("/tmp/") + name);
    }
    test.store->addFileTransfer(record);
}

void greet(TestView& test, const QString& device, const QString& wifi, qint64 battery, bool isCharging) {
    receive(test, phone::connectedMessage(device));
    receive(test, phone::deviceInfoMessage(device, wifi));
    receive(test, phone::batteryMessage(battery, isCharging));
    receive(test, phone::simInfoMessage(phone::demoSims()));
}

/// Shows the newest thread, with a draft, and a number that is being dialled.
void openThread(TestView& test, const QString& draft, const QString& number) {
    const auto& conversations = test.view.sendSmsTab()->filteredConversations()->records();
    test.view.sendSmsTab()->openConversation(conversations.first().displayAddress);
    test.view.sendSmsTab()->setChatText(draft);
    test.view.callsTab()->appendToDialpadNumber(number);
}

void one(TestView& test) {
    receive(test, phone::connectedMessage(QStringLiteral("Pixel 8")));
    receive(test, phone::batteryMessage(19, false));
    const auto now = QDateTime::currentMSecsSinceEpoch();
    receive(test, phone::smsHistoryMessage({{.address = QStringLiteral("+49 170 1234567"),
                                             .body = QStringLiteral("Lunch?"),
                                             .date = now}}));
    receive(test, phone::callHistoryMessage(
                      {{.number = QStringLiteral("+49 170 1234567"), .date = now, .duration = 63}}));
    notify(test, QStringLiteral("chat"), QStringLiteral("Ann"), QStringLiteral("Lunch?"), 30);
    test.store->addClipboard(QStringLiteral("The meeting is at 10"));
    transfer(test, QStringLiteral("holiday.jpg"), 2'345'678, false, 1);
    openThread(test, {}, QStringLiteral("1"));
}

void many(TestView& test) {
    greet(test, QStringLiteral("Pixel 8"), QStringLiteral("Home"), 82, true);
    const auto now = QDateTime::currentMSecsSinceEpoch();
    receive(test, phone::smsHistoryMessage(phone::demoSmsLog(now)));
    receive(test, phone::callHistoryMessage(phone::demoCallLog(now)));
    const QStringList apps{QStringLiteral("Mail"), QStringLiteral("calendar"), QStringLiteral("Chat"),
                           QStringLiteral("News")};
    const auto& people = phone::demoPeople();
    for (int i = 25; i >= 0; --i) {
        const auto& person = people[i % people.size()];
        auto body = QStringLiteral("See you at the station, platform %1").arg(i);
        if (i % 5 == 4) {
            body.clear();
        } else if (i % 3 == 0) {
            body = longText;
        }
        notify(test, apps[i % apps.size()], i % 4 == 1 ? person.number : person.name, body, i * 5400.0);
        test.store->addClipboard(i % 6 == 5 ? longText.repeated(6)
                                            : QStringLiteral("https://example.org/page/%1").arg(i));
        transfer(test, QStringLiteral("picture-%1.jpg").arg(i), 1'234'567 * (i + 1), i % 2 == 0,
                 i % 4 == 0 ? 0.04 * i : 1);
    }
    openThread(test, QStringLiteral("On my way 🚲"), QStringLiteral("+49171*31#"));
    test.fake.accessibilityTrust.isTrusted = true;
}

/// A number is searched for that the phone does not know, and the thread of another is still empty.
void newNumber(TestView& test) {
    receive(test, phone::simInfoMessage({{.slot = 1, .carrier = QStringLiteral("Nordic Mobile")}}));
    receive(test, phone::smsHistoryMessage(phone::demoSmsLog(QDateTime::currentMSecsSinceEpoch())));
    test.view.sendSmsTab()->openConversation(QStringLiteral("+49 30 901820"));
    test.view.sendSmsTab()->setContactQuery(QStringLiteral("+4"));
}

void longTexts(TestView& test) {
    greet(test, longName, longName, 100, true);
    const auto now = QDateTime::currentMSecsSinceEpoch();
    receive(test, phone::smsHistoryMessage({{.address = QStringLiteral("+49 170 1234567"),
                                             .name = longName,
                                             .body = longText.repeated(3),
                                             .date = now},
                                            {.address = QStringLiteral("+49 170 1234567"),
                                             .name = longName,
                                             .body = longText,
                                             .date = now - 1,
                                             .direction = phone::Direction::Outgoing}}));
    receive(test, phone::callHistoryMessage({{.number = QStringLiteral("+491701234567890123456789"),
                                              .name = longName,
                                              .date = now,
                                              .duration = 363'000}}));
    notify(test, longName, longName, longText.repeated(4), 400'000'000);
    notify(test, {}, {}, {}, 0);
    test.store->addClipboard(longText.repeated(200));
    test.store->addClipboard(
        QStringLiteral("A\n\nlist\nof\nshort\nlines\n\nthat\nis\nlonger\nthan\nten\nlines"));
    transfer(test, longName + longName + QStringLiteral(".tar.gz"), 1'234'567'890'123, true, 1);
    transfer(test, longName + QStringLiteral(".zip"), 1'234'567'890'123, false, 0.5);
    openThread(test, longText, QStringLiteral("12345678901234567890123456789"));
}

void rightToLeft(TestView& test) {
    const auto hebrew = QStringLiteral("שלום, ניפגש מחר בשעה 10:30 בתחנת הרכבת?");
    const auto arabic = QStringLiteral("مرحبا، هل نلتقي غدًا في الساعة 10:30؟");
    greet(test, QStringLiteral("הטלפון של דנה"), QStringLiteral("شبكة البيت"), 55, false);
    const auto now = QDateTime::currentMSecsSinceEpoch();
    receive(test, phone::smsHistoryMessage({{.address = QStringLiteral("+972 50 1234567"),
                                             .name = QStringLiteral("דנה כהן"),
                                             .body = hebrew,
                                             .date = now},
                                            {.address = QStringLiteral("+971 50 1234567"),
                                             .name = QStringLiteral("ليلى"),
                                             .body = arabic,
                                             .date = now - 60'000}}));
    receive(test, phone::callHistoryMessage({{.number = QStringLiteral("+972501234567"),
                                              .name = QStringLiteral("דנה כהן"),
                                              .date = now,
                                              .direction = phone::Direction::Missed}}));
    notify(test, QStringLiteral("הודעות"), QStringLiteral("דנה כהן"), hebrew, 60);
    notify(test, QStringLiteral("رسائل"), QStringLiteral("ليلى"), arabic, 7200);
    test.store->addClipboard(hebrew);
    test.store->addClipboard(arabic);
    transfer(test, QStringLiteral("תמונה מהחופשה.jpg"), 999, false, 1);
    transfer(test, QStringLiteral("صورة.png"), 0, true, 0);
    openThread(test, hebrew, {});
}

} // namespace

const std::vector<SampleState>& sampleStates() {
    static const std::vector<SampleState> states{{QStringLiteral("empty"),
                                                  [](TestView&) {
                                                  }},
                                                 {QStringLiteral("one"), one},
                                                 {QStringLiteral("many"), many},
                                                 {QStringLiteral("new-number"), newNumber},
                                                 {QStringLiteral("long"), longTexts},
                                                 {QStringLiteral("right-to-left"), rightToLeft}};
    return states;
}

} // namespace brenvale
