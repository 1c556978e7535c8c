#include "fakes/TestView.h"
#include "transfer/TransferText.h"

#include <QFile>
#include <QLocale>

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

struct FileDropTab : testing::Test, TestView {
    QUrl makeFile(const QString& name) {
        const auto path = fake.downloads.path + u'/' + name;
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write("x");
        return QUrl::fromLocalFile(path);
    }
};

} // namespace

TEST_F(FileDropTab, SendsTheChosenFilesInTheirOrder) {
    connect();
    view.sendFiles({makeFile(QStringLiteral("a")), makeFile(QStringLiteral("b"))});
    const auto sent = takeSent();
    ASSERT_EQ(sent.size(), 4U);
    EXPECT_THAT(sent[0].toStdString(), HasSubstr(R"("fileName":"a")"));
    EXPECT_THAT(sent[2].toStdString(), HasSubstr(R"("fileName":"b")"));
    EXPECT_THAT(column(*view.fileTransfers(), FileTransferListModel::FileNameRole), ElementsAre("b", "a"));
}

TEST_F(FileDropTab, ShowsAFileInItsFolder) {
    const auto url = makeFile(QStringLiteral("a"));
    view.showInFolder(url);
    EXPECT_THAT(fake.fileViewer.shown, ElementsAre(url));
}

TEST_F(FileDropTab, ClearsItsOwnListAlone) {
    store->addFileTransfer({.id = QUuid::createUuid()});
    store->addClipboard(QStringLiteral("one"));
    view.clearFileTransfers();
    EXPECT_EQ(view.fileTransfers()->count(), 0);
    EXPECT_EQ(view.clipboardHistory()->count(), 1);
}

TEST_F(FileDropTab, ARowRunsFromItsPercentToItsEnd) {
    const QDateTime date(QDate(2026, 3, 15), QTime(9, 41));
    const FileTransferRecord record{
        .id = QUuid::createUuid(), .fileSize = 1'234'567, .date = date, .progress = 0.5};
    store->addFileTransfer(record);
    const auto row = view.fileTransfers()->index(0);
    EXPECT_EQ(row.data(FileTransferListModel::ProgressTextRole), QStringLiteral("50%"));
    EXPECT_FALSE(row.data(FileTransferListModel::UrlRole).isValid());
    store->updateFileTransfer(record.id, 1, true, QUrl(QStringLiteral("file:///a")));
    EXPECT_EQ(row.data(FileTransferListModel::StatusTextRole),
              QStringLiteral("Received • %1 • %2")
                  .arg(byteCountText(1'234'567), QLocale().toString(QTime(9, 41), QLocale::ShortFormat)));
    EXPECT_TRUE(row.data(FileTransferListModel::UrlRole).isValid());
}
