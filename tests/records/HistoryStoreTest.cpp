#include "records/HistoryStore.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

NotifPayload payload(int number) {
    return {.id = QUuid::createUuid(), .title = QString::number(number)};
}

FileTransferRecord transfer(const QString& name) {
    return {.id = QUuid::createUuid(), .fileName = name};
}

} // namespace

TEST(HistoryStore, StartsEmpty) {
    const HistoryStore store;
    EXPECT_TRUE(store.items.get().isEmpty());
    EXPECT_TRUE(store.availableSIMs.get().isEmpty());
    EXPECT_TRUE(store.fileTransfers.get().isEmpty());
    EXPECT_TRUE(store.clipboardHistory.get().isEmpty());
    EXPECT_FALSE(store.connectedRemoteIP.get() || store.connectedWifiName.get() ||
                 store.connectedDeviceName.get());
    EXPECT_FALSE(store.batteryLevel.get() || store.isCharging.get() || store.incomingCallInfo.get());
}

TEST(HistoryStore, KeepsTheLatestHundredNewestFirst) {
    HistoryStore store;
    for (int i = 0; i <= 100; ++i) {
        store.add(payload(i));
    }
    ASSERT_EQ(store.items.get().size(), 100);
    EXPECT_EQ(store.items.get().front().title, QStringLiteral("100"));
    EXPECT_EQ(store.items.get().back().title, QStringLiteral("1"));
}

TEST(HistoryStore, TheLimitIsCountedForEachList) {
    HistoryStore store;
    for (int i = 0; i < 100; ++i) {
        store.add(payload(i));
        store.addClipboard(QStringLiteral("same"));
        store.addFileTransfer(transfer(QString::number(i)));
    }
    EXPECT_EQ(store.items.get().size(), 100);
    EXPECT_EQ(store.clipboardHistory.get().size(), 100);
    EXPECT_EQ(store.fileTransfers.get().size(), 100);
}

TEST(HistoryStore, EqualRecordsMakeRowsOfTheirOwn) {
    HistoryStore store;
    store.add(payload(1));
    store.add(payload(1));
    store.addClipboard(QStringLiteral("x"));
    store.addClipboard(QStringLiteral("x"));
    EXPECT_EQ(store.items.get().size(), 2);
    EXPECT_EQ(store.clipboardHistory.get().size(), 2);
    EXPECT_NE(store.clipboardHistory.get()[0].id, store.clipboardHistory.get()[1].id);
}

TEST(HistoryStore, InsertionAndTrimmingAreTwoWrites) {
    HistoryStore store;
    std::vector<qsizetype> sizes;
    for (int i = 0; i < 100; ++i) {
        store.add(payload(i));
    }
    const auto subscription =
        store.items.subscribe([&](const auto& items) { sizes.push_back(items.size()); });
    store.add(payload(100));
    EXPECT_THAT(sizes, ElementsAre(100, 101, 100));
}

TEST(HistoryStore, AClipboardRowHasThePresentTime) {
    HistoryStore store;
    const auto before = QDateTime::currentDateTime();
    store.addClipboard(QStringLiteral("x"));
    const auto& date = store.clipboardHistory.get()[0].date;
    EXPECT_TRUE(before <= date && date <= QDateTime::currentDateTime());
}

TEST(HistoryStore, AnUpdateChangesTheRowWhereItStands) {
    HistoryStore store;
    const auto old = transfer(QStringLiteral("old"));
    store.addFileTransfer(old);
    store.addFileTransfer(transfer(QStringLiteral("new")));
    const auto url = QUrl(QStringLiteral("file:///a"));
    store.updateFileTransfer(old.id, 1.0, true, url);
    const auto& row = store.fileTransfers.get()[1];
    EXPECT_EQ(row.id, old.id);
    EXPECT_EQ(row.progress, 1.0);
    EXPECT_TRUE(row.isCompleted);
    EXPECT_EQ(row.url, url);
}

TEST(HistoryStore, AnUpdateWithoutAUrlKeepsTheOneThereIs) {
    HistoryStore store;
    auto record = transfer(QStringLiteral("a"));
    record.url = QUrl(QStringLiteral("file:///a"));
    store.addFileTransfer(record);
    store.updateFileTransfer(record.id, 0.5, false);
    EXPECT_EQ(store.fileTransfers.get()[0].url, record.url);
}

TEST(HistoryStore, AnUpdateMayGoBackwards) {
    HistoryStore store;
    const auto record = transfer(QStringLiteral("a"));
    store.addFileTransfer(record);
    store.updateFileTransfer(record.id, 1.0, true);
    store.updateFileTransfer(record.id, 0.25, false);
    EXPECT_EQ(store.fileTransfers.get()[0].progress, 0.25);
    EXPECT_FALSE(store.fileTransfers.get()[0].isCompleted);
}

TEST(HistoryStore, AnUpdateOfAnUnknownRowIsNoWrite) {
    HistoryStore store;
    store.addFileTransfer(transfer(QStringLiteral("a")));
    int writes = 0;
    const auto subscription = store.fileTransfers.subscribe([&](const auto&) { ++writes; });
    store.updateFileTransfer(QUuid::createUuid(), 1.0, true);
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(store.fileTransfers.get()[0].progress, 0);
}

TEST(HistoryStore, EachClearEmptiesItsListAlone) {
    HistoryStore store;
    const auto fill = [&store] {
        store.add(payload(1));
        store.addClipboard(QStringLiteral("x"));
        store.addFileTransfer(transfer(QStringLiteral("a")));
    };
    const auto sizes = [&store] {
        return std::vector{store.items.get().size(), store.clipboardHistory.get().size(),
                           store.fileTransfers.get().size()};
    };
    fill();
    store.clear();
    EXPECT_THAT(sizes(), ElementsAre(0, 1, 1));
    store.clearClipboard();
    EXPECT_THAT(sizes(), ElementsAre(0, 0, 1));
    store.clearFileTransfers();
    EXPECT_THAT(sizes(), ElementsAre(0, 0, 0));
}
