#include "TestWindow.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

constexpr int manyRows = 40;

struct ListKeyboard : testing::Test, TestWindow {
    void notify(const std::string& app) { receive(R"({"app":")" + app + R"(","title":"","body":"Lunch?"})"); }

    void showManyTexts() {
        for (int number = manyRows; number > 0; --number) {
            store->addClipboard(textOfRow(number));
        }
        show(SettingsView::ClipboardTab);
    }

    /// The newest, number 1, is on top.
    static QString textOfRow(int number) { return QStringLiteral("text %1").arg(number); }

    /// Whether the window shows all of the control that has the keyboard.
    bool isFocusInSight() {
        const auto* item = quickView().activeFocusItem();
        const auto place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        return QRectF(QPointF(), quickView().size()).contains(place);
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

TEST_F(ListKeyboard, TabReachesEachRowInTurnAndInSight) {
    showManyTexts();
    focus(textOfRow(1).toStdString());
    for (int number = 1; number <= manyRows; ++number) {
        ASSERT_TRUE(hasFocus(textOfRow(number).toStdString())) << number;
        EXPECT_TRUE(isFocusInSight()) << number;
        type(Qt::Key_Tab);
        type(Qt::Key_Tab); // past its button
    }
    EXPECT_FALSE(hasFocus("Clipboard history")) << "beyond the last row";
}

TEST_F(ListKeyboard, BackTabDoesSoToo) {
    showManyTexts();
    focus(textOfRow(1).toStdString());
    for (int number = 1; number < manyRows; ++number) {
        type(Qt::Key_Tab);
        type(Qt::Key_Tab);
    }
    for (int number = manyRows; number > 0; --number) {
        ASSERT_TRUE(hasFocus(textOfRow(number).toStdString())) << number;
        EXPECT_TRUE(isFocusInSight()) << number;
        type(Qt::Key_Backtab, Qt::ShiftModifier);
        type(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    EXPECT_FALSE(hasFocus("Clipboard history")) << "before the first row";
}

TEST_F(ListKeyboard, ClosingTheReplyLineLeavesTheKeyboardAtItsRow) {
    notify("Chat");
    notify("Mail");
    show(SettingsView::NotificationsTab);
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        focus("Reply");
        type(Qt::Key_Space);
        ASSERT_TRUE(hasFocus("Type reply..."));
        type(key);
        EXPECT_TRUE(hasFocus("Reply"));
        EXPECT_TRUE(quickView().activeFocusItem()->property("visualFocus").toBool());
    }
}

TEST_F(ListKeyboard, ATextThatWasClickedHasNoRing) {
    store->addClipboard(QStringLiteral("some text"));
    show(SettingsView::ClipboardTab);
    const auto hasRing = [this] {
        return quickView().activeFocusItem()->property("visualFocus").toBool();
    };
    auto* text = item(QAccessible::EditableText, QStringLiteral("some text"));
    ASSERT_NE(text, nullptr);
    click(*text);
    ASSERT_TRUE(hasFocus("some text"));
    EXPECT_FALSE(hasRing());
    type(Qt::Key_Tab);
    type(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(hasFocus("some text"));
    EXPECT_TRUE(hasRing());
}
