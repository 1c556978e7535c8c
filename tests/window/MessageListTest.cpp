#include "TestWindow.h"

#include <QTest>

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

QList<SmsRecord> thread(const char* address, int count, double firstDate = 1) {
    QList<SmsRecord> log;
    for (int i = 0; i < count; ++i) {
        log.append({.address = QString::fromUtf8(address),
                    .body = QStringLiteral("Message %1 ").arg(i).repeated(1 + (i % 7)),
                    .date = firstDate + i,
                    .type = 1 + (i % 2)});
    }
    return log;
}

struct MessageList : testing::Test, TestWindow {
    void openThread(const char* address) {
        view.sendSmsTab()->openConversation(QString::fromUtf8(address));
        show(Tab::sms);
    }

    QQuickItem& list() { return *item(QAccessible::List, QStringLiteral("Messages")); }
    double place() { return list().property("contentY").toDouble(); }
    bool isAtEnd() { return list().property("atYEnd").toBool(); }
    bool isGliding() { return list().property("isFollowing").toBool(); }

    /// The message at the top of what shows.
    QString topMessage() {
        const auto y = list().mapToScene(QPointF(0, 30)).y();
        for (const auto* bubble : itemsOf("MessageBubble_QMLTYPE")) {
            const auto top = bubble->mapToScene(QPointF()).y();
            if (top <= y && y < top + bubble->height() + 10) {
                return bubble->property("body").toString();
            }
        }
        return {};
    }

    void settleGlide() {
        settle();
        ASSERT_TRUE(QTest::qWaitFor([this] { return !isGliding(); }));
        settle();
    }

    void scrollUp(double distance) {
        list().setProperty("contentY", place() - distance);
        settle();
    }
};

} // namespace

TEST_F(MessageList, OpensAtTheNewestMessageAtOnce) {
    reportSms(thread("1", 200));
    openThread("1");
    EXPECT_TRUE(isAtEnd());
    EXPECT_FALSE(isGliding());
}

TEST_F(MessageList, HasNoMoreBubblesThanShow) {
    reportSms(thread("1", 10'000));
    openThread("1");
    EXPECT_LT(itemsOf("MessageBubble_QMLTYPE").size(), 60);
    scrollUp(20'000);
    EXPECT_LT(itemsOf("MessageBubble_QMLTYPE").size(), 60);
}

TEST_F(MessageList, GlidesToANewMessage) {
    reportSms(thread("1", 50));
    openThread("1");
    const auto before = place();
    view.sendSmsTab()->setChatText(QStringLiteral("new"));
    view.sendSmsTab()->sendChatMessage();
    QCoreApplication::processEvents();
    EXPECT_TRUE(isGliding());
    settleGlide();
    EXPECT_GT(place(), before);
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageList, GlidesToANewMessageFromFarAwayToo) {
    reportSms(thread("1", 5000));
    openThread("1");
    scrollUp(100'000);
    reportSms(thread("1", 5001));
    settleGlide();
    EXPECT_TRUE(isAtEnd());
    EXPECT_LT(itemsOf("MessageBubble_QMLTYPE").size(), 60);
}

TEST_F(MessageList, PointingAtAnOlderTextMovesNothing) {
    const auto messages = thread("1", 200);
    reportSms(messages);
    openThread("1");
    scrollUp(3000);
    const QQuickItem* text = nullptr;
    for (const auto& message : messages) {
        const auto* bubble = item(QAccessible::EditableText, message.body);
        if (bubble != nullptr && bubble->mapToScene({}).y() > 150 && bubble->mapToScene({}).y() < 350) {
            text = bubble;
        }
    }
    ASSERT_NE(text, nullptr);
    const double before = place();
    click(*text);
    EXPECT_FALSE(isGliding());
    EXPECT_EQ(place(), before);
    EXPECT_TRUE(text->hasActiveFocus());
}

TEST_F(MessageList, AnotherThreadWithMoreOrFewerMessagesOpensAtItsEnd) {
    reportSms(thread("1", 200) + thread("2", 90));
    openThread("1");
    scrollUp(3000);
    view.sendSmsTab()->openConversation(QStringLiteral("2"));
    settleGlide();
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageList, AnotherThreadWithAsManyMessagesDoesNotScroll) {
    reportSms(thread("1", 100) + thread("2", 100));
    openThread("1");
    scrollUp(1500);
    const auto before = topMessage();
    ASSERT_NE(before, QString());
    view.sendSmsTab()->openConversation(QStringLiteral("2"));
    settle();
    EXPECT_FALSE(isGliding());
    EXPECT_FALSE(isAtEnd());
    EXPECT_EQ(topMessage(), before);
}

TEST_F(MessageList, AnUpdateWithoutANewMessageDoesNotScroll) {
    reportSms(thread("1", 100));
    openThread("1");
    scrollUp(1500);
    const auto before = place();
    reportSms(thread("1", 100));
    settle();
    EXPECT_EQ(place(), before);
}

TEST_F(MessageList, StaysAtTheEndWhenTheWindowChangesItsSize) {
    reportSms(thread("1", 100));
    openThread("1");
    for (const auto size : {QSize(1200, 900), QSize(800, 500)}) {
        quickView().resize(size);
        settle();
        EXPECT_TRUE(isAtEnd()) << size.width();
    }
}

TEST_F(MessageList, ALongMessageShowsItsBeginningUntilTheUserWantsAll) {
    reportSms({{.address = QStringLiteral("1"), .body = QString(100'000, u'x'), .date = 1}});
    openThread("1");
    const auto bubble = [this] {
        return itemsOf("MessageBubble_QMLTYPE").first();
    };
    const auto height = bubble()->height();
    press(QStringLiteral("Show All"));
    EXPECT_GT(bubble()->height(), 10 * height);
    EXPECT_EQ(find(QAccessible::Button, QStringLiteral("Show All")), nullptr);
}

TEST_F(MessageList, AllOfALongMessageStaysUnfoldedWhereverItStands) {
    const auto book = QStringLiteral("word ").repeated(20'000);
    auto messages = thread("1", 40);
    messages.append({.address = QStringLiteral("1"), .body = book, .date = 100});
    messages.append({.address = QStringLiteral("1"), .body = QStringLiteral("last"), .date = 101});
    reportSms(messages);
    openThread("1");
    const auto bubble = [&]() -> QQuickItem* {
        for (auto* item : itemsOf("MessageBubble_QMLTYPE")) {
            if (item->property("body").toString() == book) {
                return item;
            }
        }
        return nullptr;
    };
    ASSERT_NE(bubble(), nullptr);
    press(QStringLiteral("Show All"));
    ASSERT_NE(bubble(), nullptr) << "it stays in sight";
    EXPECT_GT(bubble()->height(), 5000);
    EXPECT_NE(item(QAccessible::EditableText, book), nullptr) << "all of it can be marked";
    list().setProperty("contentY", 0);
    settle();
    QMetaObject::invokeMethod(&list(), "positionViewAtIndex", Q_ARG(int, 40), Q_ARG(int, 0));
    settle();
    ASSERT_NE(bubble(), nullptr);
    EXPECT_GT(bubble()->height(), 5000) << "it was away and came back";
    EXPECT_EQ(find(QAccessible::Button, QStringLiteral("Show All")), nullptr);
}

TEST_F(MessageList, TheFirstBubbleKeepsItsDistanceFromTheLineAbove) {
    reportSms(thread("1", 2));
    openThread("1");
    double start = list().height();
    for (const auto* bubble : itemsOf("MessageBubble_QMLTYPE")) {
        start = std::min(start, bubble->mapToItem(&list(), QPointF()).y());
    }
    EXPECT_EQ(start, 12);
    reportSms(thread("1", 60));
    settleGlide();
    double end = 0;
    for (const auto* bubble : itemsOf("MessageBubble_QMLTYPE")) {
        end = std::max(end, bubble->mapToItem(&list(), QPointF(0, bubble->height())).y());
    }
    EXPECT_NEAR(end, list().height() - 12, 1);
}

TEST_F(MessageList, ALongWordStaysInsideItsBubble) {
    reportSms({{.address = QStringLiteral("1"), .body = QString(500, u'x'), .date = 1}});
    openThread("1");
    const auto& text = *item(QAccessible::EditableText, QString(500, u'x'));
    EXPECT_LT(text.mapToScene(QPointF(text.width(), 0)).x(), quickView().width());
    EXPECT_GT(text.height(), 60);
}

TEST_F(MessageList, SentStandsAtTheRightAndTheRestAtTheLeft) {
    reportSms({{.address = QStringLiteral("1"), .body = QStringLiteral("out"), .date = 1, .type = 2},
               {.address = QStringLiteral("1"), .body = QStringLiteral("in"), .date = 2, .type = 1},
               {.address = QStringLiteral("1"), .body = QStringLiteral("odd"), .date = 3, .type = 7}});
    openThread("1");
    const auto left = [this](const char* body) {
        return item(QAccessible::EditableText, QString::fromUtf8(body))->mapToItem(&list(), QPointF()).x();
    };
    EXPECT_GT(left("out"), list().width() / 2);
    EXPECT_EQ(left("in"), 24);
    EXPECT_EQ(left("odd"), 24);
}
