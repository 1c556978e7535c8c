#include "transfer/FileTransferListModel.h"
#include "fakes/ModelChanges.h"
#include "records/HistoryStore.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QElapsedTimer>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

FileTransferRecord transfer(const QString& name) {
    return {.id = QUuid::createUuid(), .fileName = name};
}

/// A transfer under way below a newer one, and a view of both.
struct Transfers : testing::Test {
    Transfers() {
        store.addFileTransfer(running);
        store.addFileTransfer(transfer(QStringLiteral("newer")));
        model = std::make_unique<FileTransferListModel>(store);
        recordChanges(*model, changes);
    }

    void setProgress(double progress) { store.updateFileTransfer(running.id, progress, false); }

    [[nodiscard]] double shownProgress() const {
        return model->index(1).data(FileTransferListModel::ProgressRole).toDouble();
    }

    [[nodiscard]] bool isTimerRunning() const {
        return std::ranges::any_of(model->findChildren<QTimer*>(), &QTimer::isActive);
    }

    /// Turns the event loop until the frame has ended.
    void endFrame() const {
        while (isTimerRunning()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[1] = {name};
    QCoreApplication application{argumentCount, arguments};
    HistoryStore store;
    const FileTransferRecord running = transfer(QStringLiteral("running"));
    std::unique_ptr<FileTransferListModel> model;
    std::vector<std::string> changes;
};

} // namespace

using FileTransferListModelTest = Transfers;

TEST_F(FileTransferListModelTest, ProgressWaitsForTheEndOfTheFrameAndTheLastCounts) {
    QElapsedTimer frame;
    frame.start();
    for (const double progress : {0.1, 0.2, 0.3}) {
        setProgress(progress);
    }
    EXPECT_THAT(changes, IsEmpty());
    EXPECT_EQ(shownProgress(), 0) << "what a view asks for is what it was told of";
    endFrame();
    EXPECT_GE(frame.elapsed(), 15);
    EXPECT_THAT(changes, ElementsAre("change 1-1"));
    EXPECT_EQ(shownProgress(), 0.3);
}

TEST_F(FileTransferListModelTest, EveryFrameHasAnUpdateOfItsOwn) {
    setProgress(0.1);
    endFrame();
    setProgress(0.2);
    endFrame();
    EXPECT_THAT(changes, ElementsAre("change 1-1", "change 1-1"));
    EXPECT_EQ(shownProgress(), 0.2);
}

TEST_F(FileTransferListModelTest, NoTimerRunsWhileNothingChanges) {
    EXPECT_FALSE(isTimerRunning());
    setProgress(0);
    EXPECT_FALSE(isTimerRunning()) << "the same progress again";
    setProgress(0.5);
    EXPECT_TRUE(isTimerRunning());
    setProgress(0);
    EXPECT_FALSE(isTimerRunning()) << "back to what is shown";
    setProgress(0.5);
    endFrame();
    EXPECT_FALSE(isTimerRunning());
    EXPECT_THAT(changes, ElementsAre("change 1-1"));
}

TEST_F(FileTransferListModelTest, CompletionIsShownAtOnce) {
    setProgress(0.9);
    store.updateFileTransfer(running.id, 1, true, QUrl(QStringLiteral("file:///a")));
    EXPECT_THAT(changes, ElementsAre("change 1-1"));
    EXPECT_EQ(shownProgress(), 1);
    EXPECT_TRUE(model->index(1).data(FileTransferListModel::IsCompletedRole).toBool());
    EXPECT_EQ(model->index(1).data(FileTransferListModel::UrlRole), QUrl(QStringLiteral("file:///a")));
    EXPECT_FALSE(isTimerRunning());
}

TEST_F(FileTransferListModelTest, ANewRowIsShownAtOnceWithTheProgressThatWaits) {
    setProgress(0.5);
    store.addFileTransfer(transfer(QStringLiteral("newest")));
    EXPECT_THAT(changes, ElementsAre("insert 0-0", "change 2-2"));
    EXPECT_EQ(model->index(2).data(FileTransferListModel::ProgressRole), 0.5);
    EXPECT_FALSE(isTimerRunning());
}

TEST_F(FileTransferListModelTest, ClearingRemovesTheRowsAtOnceAndNothingComesLater) {
    setProgress(0.5);
    store.clearFileTransfers();
    setProgress(0.6);
    EXPECT_THAT(changes, ElementsAre("remove 0-1"));
    EXPECT_FALSE(isTimerRunning());
}

TEST_F(FileTransferListModelTest, MayGoWhileProgressWaits) {
    setProgress(0.5);
    model.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(store.fileTransfers.get()[1].progress, 0.5);
}
