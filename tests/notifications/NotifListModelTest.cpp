#include "notifications/NotifListModel.h"
#include "fakes/ModelChanges.h"
#include "messages/ContactNames.h"
#include "records/HistoryStore.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

NotifPayload payload(int number) {
    return {.id = QUuid::createUuid(), .title = QString::number(number)};
}

const ContactNames names;

} // namespace

TEST(NotifListModel, ShowsWhatTheStoreHolds) {
    HistoryStore store;
    store.add({.id = QUuid::createUuid(),
               .app = QStringLiteral("Chat"),
               .title = QStringLiteral("Ann"),
               .body = QStringLiteral("Hi"),
               .time = 0,
               .key = QStringLiteral("k")});
    const NotifListModel model(store, names);
    ASSERT_EQ(model.rowCount(), 1);
    const auto row = model.index(0);
    EXPECT_EQ(row.data(NotifListModel::AppRole), QStringLiteral("Chat"));
    EXPECT_EQ(row.data(NotifListModel::TitleRole), QStringLiteral("Ann"));
    EXPECT_EQ(row.data(NotifListModel::BodyRole), QStringLiteral("Hi"));
    EXPECT_EQ(row.data(NotifListModel::KeyRole), QStringLiteral("k"));
    EXPECT_FALSE(row.data(NotifListModel::TimeTextRole).toString().isEmpty());
    EXPECT_EQ(model.roleNames().value(NotifListModel::TimeTextRole), "timeText");
}

TEST(NotifListModel, ANewNotificationIsOneInsertedRowAndTheOldestOneRemoved) {
    HistoryStore store;
    for (int i = 0; i < 100; ++i) {
        store.add(payload(i));
    }
    NotifListModel model(store, names);
    std::vector<std::string> changes;
    recordChanges(model, changes);
    store.add(payload(100));
    EXPECT_THAT(changes, ElementsAre("insert 0-0", "remove 100-100"));
    EXPECT_EQ(model.index(0).data(NotifListModel::TitleRole), QStringLiteral("100"));
}

TEST(NotifListModel, ClearingRemovesTheRows) {
    HistoryStore store;
    store.add(payload(1));
    store.add(payload(2));
    NotifListModel model(store, names);
    std::vector<std::string> changes;
    recordChanges(model, changes);
    store.clear();
    EXPECT_THAT(changes, ElementsAre("remove 0-1"));
    EXPECT_EQ(model.rowCount(), 0);
}

TEST(NotifListModel, AnInvalidIndexHasNoData) {
    HistoryStore store;
    const NotifListModel model(store, names);
    EXPECT_FALSE(model.data({}, NotifListModel::AppRole).isValid());
}

TEST(NotifListModel, MayGoBeforeTheStore) {
    HistoryStore store;
    {
        const NotifListModel model(store, names);
    }
    store.add(payload(1));
    EXPECT_EQ(store.items.get().size(), 1);
}
