#include "calls/CallWindows.h"

#include "fakes/TestDelegate.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// The launched program and a phone; the log and the panels' calls count from here.
struct CallWindowsTest : testing::Test, TestDelegate {
    CallWindowsTest() {
        delegate.applicationDidFinishLaunching();
        phone = connectPhone();
        phone->sent.clear();
        launchLog = dispatchLog().size();
    }

    void ring(const char* number, std::optional<QString> name = {}) {
        delegate.historyStore().incomingCallInfo.set(
            IncomingCallInfo{.number = QString::fromUtf8(number), .name = std::move(name)});
        run();
    }

    void prepare(const InternalNotifications::Object& object) {
        fake.internalNotifications.post(InternalNotifications::prepareActiveCall, object);
        run();
    }

    void report(const InternalNotifications::Object& object) {
        fake.internalNotifications.post(InternalNotifications::callDurationUpdated, object);
        run();
    }

    [[nodiscard]] QByteArrayList newLog() const { return dispatchLog().mid(launchLog); }

    [[nodiscard]] std::vector<QByteArray> takeSent() {
        run();
        return std::exchange(phone->sent, {});
    }

    qsizetype launchLog = 0;
    const PreparedCall ann{.number = QStringLiteral("17"), .name = QStringLiteral("Ann")};
};

const QByteArray answerCall = R"({"action":"answer_call"})";
const QByteArray hangupCall = R"({"action":"hangup_call"})";

} // namespace

TEST(CallWindows, TheLaunchLogsOnceThatNothingRingsAndMakesNoPanel) {
    TestDelegate test;
    test.delegate.applicationDidFinishLaunching();
    EXPECT_THAT(test.dispatchLog(), IsEmpty()) << "a step of main delivers it";
    test.run();
    EXPECT_THAT(test.dispatchLog(), ElementsAre("[AppDelegate] Incoming call cleared"));
    EXPECT_THAT(test.panels.calls, IsEmpty());
}

TEST(CallWindows, ACallThatRingsBeforeTheObserversIsPickedUp) {
    TestDelegate test;
    test.delegate.historyStore().incomingCallInfo.set(IncomingCallInfo{.number = QStringLiteral("17")});
    test.delegate.applicationDidFinishLaunching();
    test.run();
    EXPECT_THAT(test.panels.calls,
                ElementsAre(QStringLiteral("incoming made"), QStringLiteral("incoming front")));
}

TEST(CallWindows, ADeliveryAfterTheEndDoesNothing) {
    TestServer test;
    FakeCallPanels panels;
    {
        auto windows = std::make_shared<CallWindows>(test.fake.platform, test.main, *test.server, *test.store,
                                                     panels.maker());
        windows->setupIncomingCallObservation();
        test.store->incomingCallInfo.set(IncomingCallInfo{.number = QStringLiteral("17")});
    }
    test.run();
    EXPECT_THAT(panels.calls, IsEmpty());
    EXPECT_THAT(test.fake.log.lines(), IsEmpty());
}

TEST_F(CallWindowsTest, ARingIsLoggedAndShowsTheBanner) {
    ring("17", QStringLiteral("Ann"));
    EXPECT_THAT(newLog(), ElementsAre("[AppDelegate] Incoming call detected: 17"));
    EXPECT_THAT(panels.calls, ElementsAre(QStringLiteral("incoming made"), QStringLiteral("incoming front")));
    EXPECT_EQ(panels.incoming->firstLine(), QStringLiteral("Ann"));
    EXPECT_EQ(panels.incoming->secondLine(), QStringLiteral("17"));
}

TEST_F(CallWindowsTest, ASecondRingChangesTheTextsOfTheSamePanelAndBringsItToTheFront) {
    ring("17");
    int changes = 0;
    QObject::connect(panels.incoming, &IncomingCallBanner::infoChanged, [&changes] { ++changes; });
    ring("17", QStringLiteral("Ann"));
    EXPECT_THAT(panels.calls, ElementsAre(QStringLiteral("incoming made"), QStringLiteral("incoming front"),
                                          QStringLiteral("incoming front")));
    EXPECT_EQ(panels.incoming->firstLine(), QStringLiteral("Ann"));
    EXPECT_EQ(changes, 1);
}

TEST_F(CallWindowsTest, TheBannerGoesWhenTheRingingEnds) {
    ring("17");
    delegate.historyStore().incomingCallInfo.set({});
    run();
    EXPECT_THAT(newLog(), ElementsAre("[AppDelegate] Incoming call detected: 17",
                                      "[AppDelegate] Incoming call cleared"));
    EXPECT_THAT(panels.calls.mid(2),
                ElementsAre(QStringLiteral("incoming out"), QStringLiteral("incoming gone")));
    EXPECT_TRUE(panels.incoming.isNull());
}

TEST_F(CallWindowsTest, AcceptAnswersOpensTheCallWindowAndStopsTheRinging) {
    ring("17", QStringLiteral("Ann"));
    panels.calls.clear();
    panels.incoming->answer();
    EXPECT_THAT(panels.calls, IsEmpty()) << "the button's panel must not go under its hands";
    EXPECT_THAT(takeSent(), ElementsAre(answerCall));
    EXPECT_THAT(panels.calls, ElementsAre(QStringLiteral("active made"), QStringLiteral("active front"),
                                          QStringLiteral("incoming out"), QStringLiteral("incoming gone")));
    EXPECT_EQ(panels.active->firstLine(), QStringLiteral("Ann"));
    EXPECT_EQ(panels.active->secondLine(), QStringLiteral("17"));
    EXPECT_FALSE(delegate.historyStore().incomingCallInfo.get().has_value());
}

TEST_F(CallWindowsTest, AcceptTakesTheCallerOfTheLatestRing) {
    ring("17");
    ring("18", QStringLiteral("Ben"));
    panels.incoming->answer();
    run();
    EXPECT_EQ(panels.active->firstLine(), QStringLiteral("Ben"));
    EXPECT_EQ(panels.active->secondLine(), QStringLiteral("18"));
}

TEST_F(CallWindowsTest, WithoutANameTheCallWindowHasTheNumberAlone) {
    ring("17");
    panels.incoming->answer();
    run();
    EXPECT_EQ(panels.active->firstLine(), QStringLiteral("17"));
    EXPECT_EQ(panels.active->secondLine(), QString());
}

TEST_F(CallWindowsTest, DeclineHangsUpAndStopsTheRinging) {
    ring("17");
    panels.incoming->hangUp();
    EXPECT_THAT(takeSent(), ElementsAre(hangupCall));
    EXPECT_TRUE(panels.incoming.isNull());
    EXPECT_TRUE(panels.active.isNull());
}

TEST_F(CallWindowsTest, TheButtonsWorkWithoutAPhone) {
    phone->report({Connection::State::failed, "gone"});
    run();
    ring("17");
    panels.incoming->answer();
    run();
    EXPECT_TRUE(panels.incoming.isNull());
    EXPECT_FALSE(panels.active.isNull());
}

TEST_F(CallWindowsTest, APreparedCallOpensTheCallWindow) {
    prepare(ann);
    EXPECT_THAT(panels.calls, ElementsAre(QStringLiteral("active made"), QStringLiteral("active front")));
    EXPECT_THAT(newLog(), IsEmpty());
}

TEST_F(CallWindowsTest, ABareNumberOpensItWithAnEmptyName) {
    prepare(QStringLiteral("17"));
    EXPECT_EQ(panels.active->firstLine(), QStringLiteral("17"));
    EXPECT_EQ(panels.active->secondLine(), QString());
}

TEST_F(CallWindowsTest, WithoutANumberNothingOpens) {
    prepare(PreparedCall{.number = {}, .name = QStringLiteral("Ann")});
    prepare(QString());
    prepare(qint64{17});
    EXPECT_THAT(panels.calls, IsEmpty());
}

TEST_F(CallWindowsTest, ACallWindowThatIsOpenStaysAsItIs) {
    prepare(ann);
    prepare(PreparedCall{.number = QStringLiteral("18"), .name = QStringLiteral("Ben")});
    EXPECT_EQ(panels.calls.size(), 2);
    EXPECT_EQ(panels.active->firstLine(), QStringLiteral("Ann"));
}

TEST_F(CallWindowsTest, MinusOneClosesBoth) {
    ring("17");
    prepare(ann);
    panels.calls.clear();
    report(qint64{-1});
    EXPECT_THAT(panels.calls, ElementsAre(QStringLiteral("active out"), QStringLiteral("active gone"),
                                          QStringLiteral("incoming out"), QStringLiteral("incoming gone")));
    EXPECT_FALSE(delegate.historyStore().incomingCallInfo.get().has_value());
}

TEST_F(CallWindowsTest, OtherDurationsLeaveEveryWindowAsItIs) {
    ring("17");
    prepare(ann);
    panels.calls.clear();
    for (const InternalNotifications::Object& object :
         {InternalNotifications::Object(qint64{0}), InternalNotifications::Object(qint64{-2}),
          InternalNotifications::Object(QStringLiteral("-1"))}) {
        report(object);
    }
    EXPECT_THAT(panels.calls, IsEmpty());
    EXPECT_TRUE(delegate.historyStore().incomingCallInfo.get().has_value());
}

TEST_F(CallWindowsTest, TheEndOfTheConnectionClosesNothing) {
    ring("17");
    prepare(ann);
    phone->report({Connection::State::failed, "gone"});
    run();
    EXPECT_FALSE(panels.incoming.isNull());
    EXPECT_FALSE(panels.active.isNull());
}

TEST_F(CallWindowsTest, TheClockMovesWithTheReportsAlone) {
    prepare(ann);
    EXPECT_EQ(panels.active->thirdLine(), QStringLiteral("00:00"));
    report(qint64{3725});
    EXPECT_EQ(panels.active->thirdLine(), QStringLiteral("62:05"));
    report(QStringLiteral("9"));
    report(qint64{-2});
    EXPECT_EQ(panels.active->thirdLine(), QStringLiteral("62:05"));
}

TEST_F(CallWindowsTest, MuteFlipsItsStateAndTellsThePhone) {
    prepare(ann);
    EXPECT_FALSE(panels.active->isMuted());
    panels.active->toggleMute();
    EXPECT_TRUE(panels.active->isMuted());
    panels.active->toggleMute();
    EXPECT_FALSE(panels.active->isMuted());
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"toggle_mute","enabled":true})",
                                        R"({"action":"toggle_mute","enabled":false})"));
}

TEST_F(CallWindowsTest, EachCallStartsUnmutedAtNought) {
    prepare(ann);
    panels.active->toggleMute();
    report(qint64{5});
    report(qint64{-1});
    prepare(ann);
    EXPECT_FALSE(panels.active->isMuted());
    EXPECT_EQ(panels.active->thirdLine(), QStringLiteral("00:00"));
}

TEST_F(CallWindowsTest, HangingUpWaitsForThePhone) {
    prepare(ann);
    panels.active->hangUp();
    EXPECT_THAT(takeSent(), ElementsAre(hangupCall));
    EXPECT_FALSE(panels.active.isNull());
}

TEST_F(CallWindowsTest, ACallOfThePhoneRunsFromTheRingToTheEnd) {
    receive(R"({"action":"incoming_call","number":"17","name":"Ann"})");
    panels.incoming->answer();
    receive(R"({"action":"call_state_changed","state":"OFFHOOK","duration":4})");
    EXPECT_EQ(panels.active->thirdLine(), QStringLiteral("00:04"));
    receive(R"({"action":"call_ended"})");
    EXPECT_TRUE(panels.active.isNull());
}

TEST_F(CallWindowsTest, TheButtonsCanBePressedByName) {
    ring("17");
    delegate.activateAction(QStringLiteral("answer-call"));
    EXPECT_THAT(takeSent(), ElementsAre(answerCall));
    delegate.activateAction(QStringLiteral("mute-call"));
    EXPECT_THAT(takeSent(), ElementsAre(R"({"action":"toggle_mute","enabled":true})"));
    delegate.activateAction(QStringLiteral("end-call"));
    EXPECT_THAT(takeSent(), ElementsAre(hangupCall));
    ring("18");
    delegate.activateAction(QStringLiteral("decline-call"));
    EXPECT_THAT(takeSent(), ElementsAre(hangupCall));
    EXPECT_TRUE(panels.incoming.isNull());
}

TEST_F(CallWindowsTest, WithoutAPanelTheirNamesDoNothing) {
    for (const auto* name : {"answer-call", "decline-call", "mute-call", "end-call"}) {
        delegate.activateAction(QString::fromUtf8(name));
    }
    EXPECT_THAT(takeSent(), IsEmpty());
    EXPECT_THAT(panels.calls, IsEmpty());
}
