#include "platform/linux/NotificationQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

NotificationQueue::Show show(const QString& identifier, const QString& body = {}) {
    return {.request = {.identifier = identifier, .content = {.body = body}}, .completion = {}};
}

NotificationQueue::Close close(const QString& identifier) {
    return {.identifier = identifier};
}

std::string nameOf(const NotificationQueue::Step& step) {
    if (const auto* shown = std::get_if<NotificationQueue::Show>(&step)) {
        return "show " + shown->request.identifier.text().toStdString();
    }
    return "close " + std::get<NotificationQueue::Close>(step).identifier.text().toStdString();
}

std::vector<std::string> drain(NotificationQueue& queue) {
    std::vector<std::string> names;
    while (!queue.isEmpty()) {
        names.push_back(nameOf(queue.takeFront()));
    }
    return names;
}

std::vector<std::string> namesOf(const std::vector<NotificationQueue::Show>& shows) {
    std::vector<std::string> names;
    names.reserve(shows.size());
    for (const auto& each : shows) {
        names.push_back(each.request.identifier.text().toStdString());
    }
    return names;
}

} // namespace

TEST(NotificationQueue, KeepsTheOrder) {
    NotificationQueue queue;
    queue.add(show(QStringLiteral("a")));
    queue.add(close(QStringLiteral("a")));
    queue.add(show(QStringLiteral("b")));
    EXPECT_EQ(queue.front(), RequestIdentifier(QStringLiteral("a")));
    EXPECT_THAT(drain(queue), ElementsAre("show a", "close a", "show b"));
    EXPECT_EQ(queue.showCount(), 0);
}

TEST(NotificationQueue, WhatComesBackTakesItsOldPlace) {
    NotificationQueue queue;
    for (const auto& name : {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}) {
        queue.add(show(name));
    }
    auto first = queue.takeFront();
    auto second = queue.takeFront();
    queue.add(std::get<NotificationQueue::Show>(std::move(second)));
    queue.add(std::get<NotificationQueue::Show>(std::move(first)));
    EXPECT_THAT(drain(queue), ElementsAre("show a", "show b", "show c"));
}

TEST(NotificationQueue, NotificationsAreTakenBackByNameAndRemovalsStay) {
    NotificationQueue queue;
    queue.add(close(QStringLiteral("a")));
    queue.add(show(QStringLiteral("a")));
    queue.add(show(QStringLiteral("b")));
    EXPECT_THAT(namesOf(queue.takeShows(QStringLiteral("a"))), ElementsAre("a"));
    EXPECT_THAT(namesOf(queue.takeShows(QStringLiteral("c"))), IsEmpty());
    EXPECT_THAT(drain(queue), ElementsAre("close a", "show b"));
}

TEST(NotificationQueue, ARemovalThatWaitsAlreadyIsNotPutInAgain) {
    NotificationQueue queue;
    queue.add(close(QStringLiteral("a")));
    queue.add(close(QStringLiteral("a")));
    queue.add(show(QStringLiteral("a")));
    queue.add(close(QStringLiteral("a")));
    EXPECT_THAT(drain(queue), ElementsAre("close a", "show a", "close a"));
}

TEST(NotificationQueue, AServerThatAnswersGetsAllOfThem) {
    NotificationQueue queue;
    for (int i = 0; i < 5000; ++i) {
        queue.add(show(QString::number(i)));
    }
    EXPECT_THAT(queue.takeExcess(false), IsEmpty());
    EXPECT_EQ(queue.showCount(), 5000);
}

TEST(NotificationQueue, AServerThatStandsStillKeepsTheLatestThousandAndAllRemovals) {
    NotificationQueue queue;
    queue.add(close(QStringLiteral("shown")));
    for (int i = 0; i < 1003; ++i) {
        queue.add(show(QString::number(i)));
    }
    EXPECT_THAT(namesOf(queue.takeExcess(true)), ElementsAre("0", "1", "2"));
    EXPECT_EQ(queue.showCount(), 1000);
    EXPECT_EQ(nameOf(queue.takeFront()), "close shown");
    EXPECT_EQ(nameOf(queue.takeFront()), "show 3");
}

TEST(NotificationQueue, IsBoundedInBytesWhateverTheServerDoes) {
    NotificationQueue queue;
    const QString large(4 << 20, u'x'); // 8 MiB
    for (int i = 0; i < 9; ++i) {
        queue.add(show(QString::number(i), large));
    }
    EXPECT_THAT(namesOf(queue.takeExcess(false)), ElementsAre("0", "1"));
    EXPECT_THAT(queue.takeExcess(false), IsEmpty());
}

TEST(NotificationQueue, OneThatIsTooLargeAloneStays) {
    NotificationQueue queue;
    queue.add(show(QStringLiteral("a"), QString(40 << 20, u'x')));
    EXPECT_THAT(queue.takeExcess(true), IsEmpty());
    EXPECT_THAT(drain(queue), ElementsAre("show a"));
}

TEST(NotificationQueue, AllCanBeTakenOut) {
    NotificationQueue queue;
    queue.add(close(QStringLiteral("c")));
    queue.add(show(QStringLiteral("a")));
    queue.add(show(QStringLiteral("b")));
    EXPECT_THAT(namesOf(queue.takeAll()), ElementsAre("a", "b"));
    EXPECT_TRUE(queue.isEmpty());
    EXPECT_EQ(queue.showCount(), 0);
}
