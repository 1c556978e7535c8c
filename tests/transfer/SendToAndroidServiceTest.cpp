#include "fakes/TestDelegate.h"
#include "shell/SettingsView.h"
#include "shell/Tab.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct ServiceTest : testing::Test, TestDelegate {
    QUrl makeFile(const QString& name) {
        QFile file(fake.downloads.path + u'/' + name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("contents");
        return QUrl::fromLocalFile(file.fileName());
    }
};

} // namespace

TEST_F(ServiceTest, SendsEachFileInOrderAndShowsTheirTab) {
    delegate.handleSendToAndroidService(
        {makeFile(QStringLiteral("b c.txt")), makeFile(QStringLiteral("a.txt"))});
    EXPECT_EQ(windowsMade, 0);
    run();
    EXPECT_EQ(dispatchLog(), QByteArrayList({"[AppDelegate] Service triggered for file: b c.txt",
                                             "[AppDelegate] Service triggered for file: a.txt"}));
    EXPECT_EQ(notifications(), (std::vector<std::string>{"File Sent: Successfully sent 'b c.txt' to Android",
                                                         "File Sent: Successfully sent 'a.txt' to Android"}));
    EXPECT_EQ(settingsView->selectedTab(), Tab::fileDrop);
}

TEST_F(ServiceTest, WithoutALocalFileNothingHappens) {
    delegate.handleSendToAndroidService({});
    delegate.handleSendToAndroidService({QUrl(QStringLiteral("https://example.org/a.txt")),
                                         QUrl(QStringLiteral("text")),
                                         QUrl(QStringLiteral("file://another.example/tmp/a.txt"))});
    run();
    EXPECT_TRUE(dispatchLog().isEmpty());
    EXPECT_EQ(windowsMade, 0);
}

TEST_F(ServiceTest, AFileOfLocalhostIsSentLikeAnyOther) {
    auto url = makeFile(QStringLiteral("a.txt"));
    url.setHost(QStringLiteral("localhost"));
    delegate.handleSendToAndroidService({url});
    run();
    EXPECT_EQ(notifications(), (std::vector<std::string>{"File Sent: Successfully sent 'a.txt' to Android"}));
}

TEST_F(ServiceTest, AFolderIsNamedByItsLastPathComponent) {
    delegate.handleSendToAndroidService(
        {QUrl::fromLocalFile(fake.downloads.path + QStringLiteral("/Holiday/"))});
    run();
    EXPECT_EQ(dispatchLog().value(0), QByteArray("[AppDelegate] Service triggered for file: Holiday"));
}
