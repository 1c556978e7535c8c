#include "TestWindow.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct ListKeyboard : testing::Test, TestWindow {
    void notify(const std::string& app) {
        receive(R"({"app":")" + app + R"(","title":"","body":"Lunch?"})");
    }
};

} // namespace

TEST_F(ListKeyboard, ANewNotificationLeavesTheKeyboardToTheReply) {
    notify("Chat");
    show(SettingsView::NotificationsTab);
    press(QStringLiteral("Reply"));
    type(QStringLiteral("on"));
    notify("Mail");
    settle();
    type(QStringLiteral("my way"));
    EXPECT_EQ(view.replyText(), QStringLiteral("onmy way"));
}
