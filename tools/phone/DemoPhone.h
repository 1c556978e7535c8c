#pragma once

#include "DemoCall.h"
#include "DemoData.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

#include <deque>
#include <functional>

namespace brenvale::phone {

/// What the demo's phone does about something: lines for people and messages for the desktop.
struct Reaction {
    QStringList lines = {};
    QList<QByteArray> messages = {};
};

/// The demo's phone: its logs, its call, its people, and what it answers to the desktop. It knows no link and
/// no timer; the program calls secondPassed once a second. One thread at a time.
class DemoPhone {
public:
    using Clock = std::function<qint64()>; ///< milliseconds since 1970

    static constexpr int secondsToAnswerSms = 4;

    explicit DemoPhone(Clock clock);

    /// Name, network, SIMs, battery and logs: what a phone sends when it has connected.
    [[nodiscard]] Reaction introduction() const;

    Reaction ring(const Person& caller);
    Reaction receiveSms(const Person& sender, const QString& body);

    /// To a message of the desktop.
    Reaction reactTo(const QJsonObject& message);
    Reaction secondPassed();

    [[nodiscard]] bool isCalling() const { return !call_.isIdle(); }

private:
    struct PendingAnswer {
        Person person;
        int seconds = 0;
    };

    Reaction makeCall(const QString& number);
    Reaction sendSms(const QString& number, const QString& body);
    Reaction afterCall(QString line, QList<QByteArray> messages);

    Clock clock_;
    QList<Sms> smsLog_;
    QList<Call> callLog_;
    DemoCall call_;
    std::deque<PendingAnswer> pendingAnswers_;
};

} // namespace brenvale::phone
