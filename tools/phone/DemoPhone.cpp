#include "DemoPhone.h"

#include <algorithm>
#include <utility>

namespace brenvale::phone {
namespace {

QString digitsOf(const QString& number) {
    QString digits;
    std::ranges::copy_if(number, std::back_inserter(digits), [](QChar c) { return c.isDigit(); });
    return digits;
}

/// The person with this number, however it is written; a nameless one where nobody has it.
Person personWith(const QString& number) {
    const auto& people = demoPeople();
    const auto found = std::ranges::find_if(
        people, [&number](const Person& person) { return digitsOf(person.number) == digitsOf(number); });
    return found == people.end() ? Person{.name = {}, .number = number} : *found;
}

QString shownName(const Person& person) {
    return person.name.isEmpty() ? person.number : person.name;
}

std::optional<QString> nameOf(const Person& person) {
    return person.name.isEmpty() ? std::nullopt : std::optional(person.name);
}

} // namespace

DemoPhone::DemoPhone(Clock clock)
    : clock_(std::move(clock)), smsLog_(demoSmsLog(clock_())), callLog_(demoCallLog(clock_())) {}

Reaction DemoPhone::introduction() const {
    return {.lines = {QStringLiteral("introduces itself: name, Wi-Fi, SIMs, battery, logs")},
            .messages = {connectedMessage(QStringLiteral("Demo phone")),
                         deviceInfoMessage(QStringLiteral("Demo phone"), QStringLiteral("Home 🏡")),
                         simInfoMessage(demoSims()), batteryMessage(82, false), smsHistoryMessage(smsLog_),
                         callHistoryMessage(callLog_)}};
}

Reaction DemoPhone::ring(const Person& caller) {
    return {.lines = {QStringLiteral("rings: %1 calls").arg(shownName(caller))},
            .messages = call_.ring(caller)};
}

Reaction DemoPhone::receiveSms(const Person& sender, const QString& body) {
    const qint64 now = clock_();
    const qint64 seconds = now / 1000;
    smsLog_.prepend({.address = sender.number, .name = nameOf(sender), .body = body, .date = now});
    return {.lines = {QStringLiteral("gets an SMS from %1: %2").arg(shownName(sender), body)},
            .messages = {smsHistoryMessage(smsLog_),
                         notificationMessage({.app = QStringLiteral("Messages"),
                                              .title = shownName(sender),
                                              .body = body,
                                              .time = static_cast<double>(seconds),
                                              .key = QStringLiteral("0|messages|") + sender.number})}};
}

Reaction DemoPhone::reactTo(const QJsonObject& message) {
    const QString action = message.value(QLatin1String("action")).toString();
    const QString number = message.value(QLatin1String("number")).toString();
    if (action == QLatin1String("get_sms_history")) {
        return {.messages = {smsHistoryMessage(smsLog_)}};
    }
    if (action == QLatin1String("get_call_history")) {
        return {.messages = {callHistoryMessage(callLog_)}};
    }
    if (action == QLatin1String("make_call")) {
        return makeCall(number);
    }
    if (action == QLatin1String("send_sms")) {
        return sendSms(number, message.value(QLatin1String("body")).toString());
    }
    if (action == QLatin1String("answer_call")) {
        return afterCall(QStringLiteral("talks"), call_.answer());
    }
    if (action == QLatin1String("hangup_call")) {
        return afterCall(QStringLiteral("hangs up"), call_.hangUp());
    }
    return {};
}

Reaction DemoPhone::secondPassed() {
    Reaction reaction;
    const bool wasIdle = call_.isIdle();
    QList<QByteArray> ofTheCall = call_.secondPassed();
    if (!wasIdle && call_.isIdle()) {
        reaction = afterCall(QStringLiteral("the call is over"), std::move(ofTheCall));
    } else {
        reaction.messages = std::move(ofTheCall);
    }
    for (PendingAnswer& pending : pendingAnswers_) {
        --pending.seconds;
    }
    while (!pendingAnswers_.empty() && pendingAnswers_.front().seconds <= 0) {
        const Person person = pendingAnswers_.front().person;
        pendingAnswers_.pop_front();
        const Reaction answer = receiveSms(person, demoAnswer(person));
        reaction.lines += answer.lines;
        reaction.messages += answer.messages;
    }
    return reaction;
}

Reaction DemoPhone::makeCall(const QString& number) {
    const Person called = personWith(number);
    return afterCall(QStringLiteral("calls %1, it rings there").arg(shownName(called)), call_.dial(called));
}

Reaction DemoPhone::sendSms(const QString& number, const QString& body) {
    const Person person = personWith(number);
    smsLog_.prepend({.address = number,
                     .name = nameOf(person),
                     .body = body,
                     .date = clock_(),
                     .direction = Direction::Outgoing});
    if (nameOf(person)) {
        pendingAnswers_.push_back({.person = person, .seconds = secondsToAnswerSms});
    }
    return {.lines = {QStringLiteral("sends the SMS to %1").arg(shownName(person))},
            .messages = {smsHistoryMessage(smsLog_)}};
}

/// A call that has ended goes to the head of the log, and the desktop hears of the new log.
Reaction DemoPhone::afterCall(QString line, QList<QByteArray> messages) {
    if (messages.isEmpty()) {
        return {.lines = {QStringLiteral("has no call for that")}};
    }
    if (auto finished = call_.takeFinished()) {
        finished->date = clock_() - (finished->duration * 1000);
        callLog_.prepend(*finished);
        messages.append(callHistoryMessage(callLog_));
    }
    return {.lines = {std::move(line)}, .messages = std::move(messages)};
}

} // namespace brenvale::phone
