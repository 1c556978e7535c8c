#include "ShownWindow.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QTemporaryFile>

#include <gmock/gmock.h>

#include <algorithm>

using namespace brenvale;
using testing::HasSubstr;

namespace {

using ClipboardTabTest = ShownWindow;
using FileDropTest = ShownWindow;

struct NotificationsTest : ShownWindow {
    void notify(const char* app) {
        receive(QByteArray(R"({"app":"%1","title":"","body":""})").replace("%1", app).toStdString());
    }
};

} // namespace

TEST_F(ClipboardTabTest, AnEmptyHistoryInvitesAndCannotBeCleared) {
    show(Tab::clipboard);
    EXPECT_TRUE(shows("No received items yet"));
    EXPECT_FALSE(shows("Clear History"));
}

TEST_F(ClipboardTabTest, ClearHistoryEmptiesIt) {
    store->addClipboard(QStringLiteral("one"));
    show(Tab::clipboard);
    EXPECT_FALSE(shows("No received items yet"));
    ASSERT_TRUE(press("Clear History"));
    EXPECT_TRUE(store->clipboardHistory.get().isEmpty());
    EXPECT_TRUE(shows("No received items yet"));
}

TEST_F(ClipboardTabTest, TheButtonCopiesAllOfATextThatTheRowCuts) {
    const auto text = QStringLiteral("line\n").repeated(40);
    store->addClipboard(text);
    show(Tab::clipboard);
    ASSERT_TRUE(press("Copy to Mac Clipboard"));
    EXPECT_EQ(fake.pasteboard.calls.last(), QStringLiteral("set:") + text);
}

TEST_F(ClipboardTabTest, ARowShowsTenLines) {
    const auto text = QStringLiteral("line\n").repeated(9) + QStringLiteral("😀\n").repeated(40);
    store->addClipboard(text);
    show(Tab::clipboard);
    EXPECT_EQ(find(text)->object()->property("text").toString().count(u'\n'), 9);
}

TEST_F(ClipboardTabTest, SendsWhatIsOnTheClipboard) {
    connect();
    show(Tab::clipboard);
    (void)takeSent();
    ASSERT_TRUE(press("Send Current Mac Clipboard"));
    EXPECT_TRUE(takeSent().empty()) << "there is nothing on it";
    fake.pasteboard.contents = QStringLiteral("hello");
    ASSERT_TRUE(press("Send Current Mac Clipboard"));
    const auto sent = takeSent();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_THAT(sent.front().toStdString(), HasSubstr("hello"));
}

TEST_F(NotificationsTest, NoneAreAnEmptyStateWithoutAFooter) {
    show(Tab::notifications);
    EXPECT_TRUE(shows("No notifications yet"));
    EXPECT_TRUE(shows("Notifications forwarded from your Android phone will appear here."));
    EXPECT_FALSE(shows("Clear All"));
}

TEST_F(NotificationsTest, TheFooterCountsAndClears) {
    notify("Chat");
    show(Tab::notifications);
    EXPECT_TRUE(shows("1 notification"));
    notify("Mail");
    settle();
    EXPECT_TRUE(shows("2 notifications"));
    ASSERT_TRUE(press("Clear All"));
    EXPECT_TRUE(store->items.get().isEmpty());
    EXPECT_TRUE(shows("No notifications yet"));
}

TEST_F(NotificationsTest, OneThatSaysNothingHasAName) {
    notify("");
    show(Tab::notifications);
    EXPECT_TRUE(shows("Notification"));
    EXPECT_TRUE(shows("Reply"));
}

TEST_F(NotificationsTest, CancelKeepsTheDraftForTheNextReply) {
    notify("Chat");
    show(Tab::notifications);
    ASSERT_TRUE(press("Reply"));
    EXPECT_FALSE(shows("Reply")) << "the line is in its place";
    view.notificationsTab()->setReplyText(QStringLiteral("soon"));
    ASSERT_TRUE(press("Cancel"));
    EXPECT_FALSE(shows("Type reply..."));
    ASSERT_TRUE(press("Reply"));
    EXPECT_EQ(view.notificationsTab()->replyText(), QStringLiteral("soon"));
    EXPECT_EQ(find(QStringLiteral("Type reply..."))->text(QAccessible::Value), QStringLiteral("soon"));
}

TEST_F(NotificationsTest, AnEmptyReplyIsSentToo) {
    connect();
    notify("Chat");
    show(Tab::notifications);
    (void)takeSent();
    ASSERT_TRUE(press("Reply"));
    ASSERT_TRUE(press("Send"));
    EXPECT_EQ(takeSent().size(), 1U);
    EXPECT_FALSE(shows("Type reply..."));
}

TEST_F(NotificationsTest, ABookIsSaidAndLaidOutInItsBeginningOnly) {
    const auto book = std::string(1'000'000, 'x');
    receive(R"({"app":")" + book + R"(","title":")" + book + R"(","body":")" + book + R"("})");
    show(Tab::notifications);
    for (const auto role : {QAccessible::ListItem, QAccessible::StaticText}) {
        for (const auto& name : namesOf(role)) {
            EXPECT_LE(name.size(), (3 * 1200) + 4);
        }
    }
    EXPECT_TRUE(namesOf(QAccessible::StaticText).contains(QString(1200, u'x')));
}

TEST_F(FileDropTest, ARowShowsHowFarItIsAndThenWhatBecameOfIt) {
    FileTransferRecord record;
    record.id = QUuid::createUuid();
    record.fileName = QStringLiteral("a.jpg");
    record.progress = 0.5;
    store->addFileTransfer(record);
    show(Tab::fileDrop);
    EXPECT_TRUE(shows("a.jpg"));
    EXPECT_TRUE(shows("50%"));
    EXPECT_FALSE(shows("Show in Finder")) << "it is nowhere yet";
    store->updateFileTransfer(record.id, 1, true, QUrl::fromLocalFile(QStringLiteral("/tmp/a.jpg")));
    settle();
    EXPECT_FALSE(shows("50%"));
    ASSERT_TRUE(press("Show in Finder"));
    EXPECT_EQ(fake.fileViewer.shown, QList{QUrl::fromLocalFile(QStringLiteral("/tmp/a.jpg"))});
}

TEST_F(FileDropTest, AnEmptyListIsJustThatAndCannotBeCleared) {
    show(Tab::fileDrop);
    EXPECT_TRUE(shows("File Drop"));
    EXPECT_FALSE(shows("Clear History"));
}

TEST_F(FileDropTest, FilesThatAreDroppedOnItAreSent) {
    connect();
    show(Tab::fileDrop);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(file.fileName())});
    const QPoint place(600, 400);
    QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view(), &drop);
    EXPECT_TRUE(drop.isAccepted());
    settle();
    ASSERT_EQ(store->fileTransfers.get().size(), 1);
    EXPECT_TRUE(store->fileTransfers.get().first().isOutgoing);
}

TEST_F(FileDropTest, ATextThatIsDroppedOnItIsRefused) {
    show(Tab::fileDrop);
    QMimeData text;
    text.setText(QStringLiteral("text"));
    QDragEnterEvent enter({600, 400}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.view(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(FileDropTest, APickerIsOneEvenWhereTheWindowIsAnother) {
    const auto pickers = [] {
        return std::ranges::count_if(QApplication::topLevelWidgets(), [](const QWidget* widget) {
            return widget->isVisible() && qobject_cast<const QFileDialog*>(widget) != nullptr;
        });
    };
    show(Tab::fileDrop);
    ASSERT_TRUE(press("Send Files..."));
    close();
    show(Tab::fileDrop);
    ASSERT_TRUE(press("Send Files..."));
    EXPECT_EQ(pickers(), 1);
    for (auto* widget : QApplication::topLevelWidgets()) {
        widget->close();
    }
    settle();
}

TEST_F(FileDropTest, SendFilesOpensAPickerForSeveralFilesAndSendsWhatItGives) {
    show(Tab::fileDrop);
    ASSERT_TRUE(press("Send Files..."));
    QFileDialog* picker = nullptr;
    for (auto* widget : QApplication::topLevelWidgets()) {
        picker = picker == nullptr ? qobject_cast<QFileDialog*>(widget) : picker;
    }
    ASSERT_NE(picker, nullptr);
    EXPECT_EQ(picker->fileMode(), QFileDialog::ExistingFiles);
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    picker->findChild<QLineEdit*>()->setText(file.fileName());
    show(Tab::settings); // the picker does not mind what the window shows
    static_cast<QDialog*>(picker)->done(QDialog::Accepted);
    settle();
    ASSERT_EQ(store->fileTransfers.get().size(), 1);
    EXPECT_TRUE(store->fileTransfers.get().first().isOutgoing);
}
