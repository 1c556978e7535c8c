#include "DemoPhone.h"
#include "DemoScript.h"
#include "Printing.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

constexpr qint64 now = 1'700'000'000'000;

class DemoPhoneTest : public testing::Test {
protected:
    static QJsonObject object(const QByteArray& json) { return QJsonDocument::fromJson(json).object(); }
    static QString action(const QByteArray& message) {
        return object(message).value(QLatin1String("action")).toString();
    }

    static QStringList actions(const Reaction& reaction) {
        QStringList all;
        for (const QByteArray& message : reaction.messages) {
            all += action(message);
        }
        return all;
    }

    Reaction ask(const char* message) { return phone_.reactTo(object(message)); }

    DemoPhone phone_{[] {
        return now;
    }};
};

TEST_F(DemoPhoneTest, IntroducesItself) {
    EXPECT_EQ(actions(phone_.introduction()),
              (QStringList{QStringLiteral("connected"), QStringLiteral("device_info"),
                           QStringLiteral("sim_info"), QStringLiteral("battery_status"),
                           QStringLiteral("sms_history"), QStringLiteral("call_history")}));
}

TEST_F(DemoPhoneTest, SentSmsIsAtTheHeadOfTheLogAndIsAnswered) {
    const Reaction sent = ask(R"({"action":"send_sms","number":"5550100108","body":"hi","simSlot":0})");
    ASSERT_EQ(actions(sent), QStringList{QStringLiteral("sms_history")});
    const QJsonObject first =
        object(sent.messages.constFirst()).value(QLatin1String("messages")).toArray().first().toObject();
    EXPECT_EQ(first.value(QLatin1String("body")).toString(), QStringLiteral("hi"));
    EXPECT_EQ(first.value(QLatin1String("type")).toInt(), 2);
    EXPECT_EQ(first.value(QLatin1String("date")).toInteger(), now);
    EXPECT_EQ(first.value(QLatin1String("name")).toString(), QStringLiteral("Grandpa"));

    for (int i = 1; i < DemoPhone::secondsToAnswerSms; ++i) {
        EXPECT_TRUE(phone_.secondPassed().messages.isEmpty());
    }
    EXPECT_EQ(actions(phone_.secondPassed()), (QStringList{QStringLiteral("sms_history"), QString()}))
        << "the log, and the notification, which has no action";
    EXPECT_TRUE(phone_.secondPassed().messages.isEmpty());
}

TEST_F(DemoPhoneTest, LogsAreSentWhenAskedFor) {
    EXPECT_EQ(actions(ask(R"({"action":"get_sms_history"})")), QStringList{QStringLiteral("sms_history")});
    EXPECT_EQ(actions(ask(R"({"action":"get_call_history"})")), QStringList{QStringLiteral("call_history")});
}

TEST_F(DemoPhoneTest, CallGoesToTheLogWhenItEnds) {
    (void)phone_.ring(demoPeople().constFirst());
    EXPECT_TRUE(phone_.isCalling());
    EXPECT_EQ(actions(ask(R"({"action":"answer_call"})")), QStringList{QStringLiteral("call_state_changed")});
    const Reaction ended = ask(R"({"action":"hangup_call"})");
    EXPECT_EQ(actions(ended), (QStringList{QStringLiteral("call_ended"), QStringLiteral("call_history")}));
    EXPECT_FALSE(phone_.isCalling());
    const QJsonArray calls = object(ended.messages.at(1)).value(QLatin1String("calls")).toArray();
    EXPECT_EQ(calls.first().toObject().value(QLatin1String("number")).toString(),
              demoPeople().constFirst().number);
    EXPECT_EQ(calls.size(), demoCallLog(now).size() + 1);
}

TEST_F(DemoPhoneTest, HangingUpWithoutACallIsOnlySaid) {
    const Reaction reaction = ask(R"({"action":"hangup_call"})");
    EXPECT_TRUE(reaction.messages.isEmpty());
    EXPECT_FALSE(reaction.lines.isEmpty());
}

TEST_F(DemoPhoneTest, OtherMessagesNeedNoAnswer) {
    EXPECT_TRUE(ask(R"({"action":"nav_command","command":"home"})").messages.isEmpty());
    EXPECT_TRUE(ask(R"({})").messages.isEmpty());
}

TEST_F(DemoPhoneTest, LogsAreNewestFirstAndInThePast) {
    const QList<Sms> log = demoSmsLog(now);
    EXPECT_GE(log.size(), 24);
    EXPECT_GT(now, log.constFirst().date);
    EXPECT_TRUE(std::ranges::is_sorted(log, std::greater{}, &Sms::date));
    EXPECT_TRUE(std::ranges::is_sorted(demoCallLog(now), std::greater{}, &Call::date));
}

TEST_F(DemoPhoneTest, EveryStepOfTheScriptSendsWholeMessages) {
    for (const DemoStep& step : demoScript()) {
        const Reaction reaction = step.perform(phone_);
        EXPECT_FALSE(reaction.messages.isEmpty());
        for (const QByteArray& message : reaction.messages) {
            EXPECT_TRUE(QJsonDocument::fromJson(message).isObject()) << message.toStdString();
        }
    }
}

} // namespace
} // namespace brenvale::phone
