#include "fakes/TestDelegate.h"
#include "shell/SettingsView.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct StatusMenuTest : testing::Test, TestDelegate {
    StatusMenuTest() { delegate.applicationDidFinishLaunching(); }

    [[nodiscard]] const std::vector<MenuItem>& rows() const { return fake.statusItem.rows; }
    [[nodiscard]] std::string status() const { return rows()[2].title.toStdString(); }
};

} // namespace

TEST_F(StatusMenuTest, HasItsRowsInOrderWithTheirKeys) {
    std::vector<std::string> shown;
    for (const auto& row : rows()) {
        const auto text = row.title + u'|' + row.keyEquivalent;
        shown.push_back(row.isSeparator ? "-" : text.toStdString() + (row.action ? "" : "|off"));
    }
    EXPECT_EQ(shown, (std::vector<std::string>{
                         "Brenvale||off", "-", "Server: starting…||off", "-", "Call…|c", "Send SMS…|s",
                         "File Drop…|f", "Notifications…|y", "Remote Control…|r", "Send Clipboard|v",
                         "Clipboard History…|h", "Settings…|,", "Info…|i", "-", "Quit Brenvale|q"}));
    EXPECT_EQ(std::ranges::count(rows(), 1, &MenuItem::tag), 1);
    EXPECT_EQ(rows()[2].tag, 1);
}

TEST_F(StatusMenuTest, EachRowOpensItsTab) {
    const std::vector<std::pair<const char*, int>> tabs{
        {"Call…", 4},           {"Send SMS…", 2}, {"File Drop…", 5},         {"Notifications…", 1},
        {"Remote Control…", 7}, {"Settings…", 0}, {"Clipboard History…", 6}, {"Info…", 3}};
    for (const auto& [title, tab] : tabs) {
        fake.statusItem.choose(QString::fromUtf8(title));
        EXPECT_EQ(settingsView->selectedTab(), tab) << title;
        EXPECT_TRUE(window->isShown);
        window->close();
    }
}

TEST_F(StatusMenuTest, TheNamesOfOtherProgramsDoTheSame) {
    const std::vector<std::pair<const char*, int>> tabs{{"call", 4},          {"sms", 2},    {"file-drop", 5},
                                                        {"notifications", 1}, {"remote", 7}, {"settings", 0},
                                                        {"clipboard", 6},     {"info", 3}};
    for (const auto& [name, tab] : tabs) {
        delegate.activateAction(QString::fromUtf8(name));
        EXPECT_EQ(settingsView->selectedTab(), tab) << name;
    }
    window->close();
    delegate.activateAction(QStringLiteral("no such action"));
    EXPECT_FALSE(window->isShown);
}

TEST_F(StatusMenuTest, TheStateFollowsTheServerOnMain) {
    server->onStatusChange(QStringLiteral("listening on :8765"));
    EXPECT_EQ(status(), "Server: starting…");
    TestServer::main.run();
    EXPECT_EQ(status(), "Server: listening on :8765");
}

TEST_F(StatusMenuTest, TheFirstReportOfTheServerIsNotLost) {
    run();
    transport.listeners.back()->report({Listener::State::ready, {}});
    run();
    EXPECT_EQ(status(), "Server: listening on :8765");
}

TEST_F(StatusMenuTest, SendClipboardSendsTheTextAndOpensNothing) {
    const auto connection = connectPhone();
    connection->sent.clear();
    fake.pasteboard.contents = QStringLiteral("copied");
    fake.statusItem.choose(QStringLiteral("Send Clipboard"));
    run();
    ASSERT_EQ(connection->sent.size(), 1U);
    EXPECT_TRUE(connection->sent.front().contains("copied"));
    EXPECT_EQ(windowsMade, 0);
}

TEST_F(StatusMenuTest, TheTextIsSentWhenItsOwnerGivesIt) {
    const auto connection = connectPhone();
    connection->sent.clear();
    fake.pasteboard.isSlow = true;
    fake.statusItem.choose(QStringLiteral("Send Clipboard"));
    run();
    EXPECT_TRUE(connection->sent.empty());
    fake.pasteboard.contents = QStringLiteral("late");
    fake.pasteboard.answerAll();
    run();
    EXPECT_EQ(connection->sent.size(), 1U);
}

TEST_F(StatusMenuTest, AnEmptyClipboardAndOneWithoutTextSendNothing) {
    const auto connection = connectPhone();
    connection->sent.clear();
    delegate.activateAction(QStringLiteral("send-clipboard"));
    fake.pasteboard.contents = QString();
    delegate.activateAction(QStringLiteral("send-clipboard"));
    run();
    EXPECT_TRUE(connection->sent.empty());
}

TEST_F(StatusMenuTest, QuitEndsTheEventLoop) {
    int count = 1;
    char name[] = "shell-tests";
    char* arguments[] = {name};
    QCoreApplication application(count, arguments);
    QTimer::singleShot(0, &application, [this] { fake.statusItem.choose(QStringLiteral("Quit Brenvale")); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}
