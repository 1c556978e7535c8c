#include "transfer/FileDropTab.h"
#include "fakes/TestPhone.h"
#include "transfer/TransferText.h"

#include <QFile>
#include <QLocale>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct FileDrop : testing::Test, TestPhone {
    QUrl makeFile(const QString& name) {
        const auto path = fake.downloads.path + u'/' + name;
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write("x");
        return QUrl::fromLocalFile(path);
    }

    FileDropTab tab{*store, *server, fake.fileViewer};
};

} // namespace

TEST_F(FileDrop, SendsTheChosenFilesInTheirOrder) {
    connect();
    tab.sendFiles({makeFile(QStringLiteral("a")), makeFile(QStringLiteral("b"))});
    const auto sent = takeSent();
    ASSERT_EQ(sent.size(), 4U);
    EXPECT_THAT(sent[0].toStdString(), HasSubstr(R"("fileName":"a")"));
    EXPECT_THAT(sent[2].toStdString(), HasSubstr(R"("fileName":"b")"));
    EXPECT_THAT(column(*tab.fileTransfers(), FileTransferListModel::FileNameRole), ElementsAre("b", "a"));
}

TEST_F(FileDrop, ShowsAFileInItsFolder) {
    const auto url = makeFile(QStringLiteral("a"));
    tab.showInFolder(url);
    EXPECT_THAT(fake.fileViewer.shown, ElementsAre(url));
}

TEST_F(FileDrop, ClearsItsOwnListAlone) {
    store->addFileTransfer({.id = QUuid::createUuid()});
    store->addClipboard(QStringLiteral("one"));
    tab.clearFileTransfers();
    EXPECT_EQ(tab.fileTransfers()->count(), 0);
    EXPECT_EQ(store->clipboardHistory.get().size(), 1);
}

TEST_F(FileDrop, ARowRunsFromItsPercentToItsEnd) {
    const QDateTime date(QDate(2026, 3, 15), QTime(9, 41));
    const FileTransferRecord record{
        .id = QUuid::createUuid(), .fileSize = 1'234'567, .date = date, .progress = 0.5};
    store->addFileTransfer(record);
    const auto row = tab.fileTransfers()->index(0);
    EXPECT_EQ(row.data(FileTransferListModel::ProgressTextRole), QStringLiteral("50%"));
    EXPECT_FALSE(row.data(FileTransferListModel::UrlRole).isValid());
    store->updateFileTransfer(record.id, 1, true, QUrl(QStringLiteral("file:///a")));
    EXPECT_EQ(row.data(FileTransferListModel::StatusTextRole),
              QStringLiteral("Received • %1 • %2")
                  .arg(byteCountText(1'234'567), QLocale().toString(QTime(9, 41), QLocale::ShortFormat)));
    EXPECT_TRUE(row.data(FileTransferListModel::UrlRole).isValid());
}
