#include "DemoCall.h"
#include "Printing.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

const Person& mara() {
    return demoPeople().constFirst();
}

/// What a call reports in short: action, state, duration.
QString shortForm(const QList<QByteArray>& messages) {
    QStringList forms;
    for (const QByteArray& message : messages) {
        const QJsonObject object = QJsonDocument::fromJson(message).object();
        forms += QStringLiteral("%1 %2 %3")
                     .arg(object.value(QLatin1String("action")).toString(),
                          object.value(QLatin1String("state")).toString(),
                          QString::number(object.value(QLatin1String("duration")).toInt(-9)));
    }
    return forms.join(QLatin1Char(','));
}

QString afterSeconds(DemoCall& call, int seconds) {
    QList<QByteArray> messages;
    for (int i = 0; i < seconds; ++i) {
        messages = call.secondPassed();
    }
    return shortForm(messages);
}

TEST(DemoCall, AnsweredCallCountsItsSeconds) {
    DemoCall call;
    EXPECT_EQ(shortForm(call.ring(mara())), QStringLiteral("incoming_call RINGING -9"));
    EXPECT_EQ(shortForm(call.answer()), QStringLiteral("call_state_changed OFFHOOK 0"));
    EXPECT_EQ(afterSeconds(call, 1), QStringLiteral("call_update OFFHOOK 1"));
    EXPECT_EQ(afterSeconds(call, 4), QStringLiteral("call_update OFFHOOK 5"));
    EXPECT_EQ(shortForm(call.hangUp()), QStringLiteral("call_ended IDLE -9"));
    const Call finished = call.takeFinished().value_or(Call());
    EXPECT_FALSE(finished.number.isEmpty());
    EXPECT_EQ(finished.duration, 5);
    EXPECT_EQ(finished.direction, Direction::Incoming);
    EXPECT_FALSE(call.takeFinished().has_value()) << "a call goes to the log once";
}

TEST(DemoCall, RingingStopsAfterAWhileAndIsMissed) {
    DemoCall call;
    (void)call.ring(mara());
    EXPECT_EQ(afterSeconds(call, DemoCall::ringingSeconds - 1), QString());
    EXPECT_EQ(afterSeconds(call, 1), QStringLiteral("call_ended IDLE -9"));
    EXPECT_TRUE(call.isIdle());
    const Call finished = call.takeFinished().value_or(Call());
    EXPECT_FALSE(finished.number.isEmpty());
    EXPECT_EQ(finished.direction, Direction::Missed);
    EXPECT_EQ(finished.duration, 0);
}

TEST(DemoCall, DialledCallCountsOnceItIsAnsweredThere) {
    DemoCall call;
    EXPECT_EQ(shortForm(call.dial({.name = {}, .number = QStringLiteral("5")})),
              QStringLiteral("call_state_changed OFFHOOK -9"));
    EXPECT_EQ(afterSeconds(call, DemoCall::diallingSeconds), QStringLiteral("call_state_changed OFFHOOK 0"));
    EXPECT_EQ(afterSeconds(call, 2), QStringLiteral("call_update OFFHOOK 2"));
    EXPECT_EQ(afterSeconds(call, DemoCall::talkingSeconds - 2), QStringLiteral("call_ended IDLE -9"));
    const Call finished = call.takeFinished().value_or(Call());
    EXPECT_FALSE(finished.number.isEmpty());
    EXPECT_EQ(finished.direction, Direction::Outgoing);
    EXPECT_EQ(finished.name, std::nullopt);
}

TEST(DemoCall, WhatMakesNoSenseNowGivesNothing) {
    DemoCall call;
    EXPECT_TRUE(call.answer().isEmpty());
    EXPECT_TRUE(call.hangUp().isEmpty());
    EXPECT_TRUE(call.secondPassed().isEmpty());
    (void)call.ring(mara());
    EXPECT_TRUE(call.ring(mara()).isEmpty());
    EXPECT_TRUE(call.dial(mara()).isEmpty());
}

} // namespace
} // namespace brenvale::phone
