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
        show(Tab::clipboard);
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
    show(Tab::notifications);
    press(QStringLiteral("Reply"));
    type(QStringLiteral("on"));
    notify("Mail");
    settle();
    type(QStringLiteral("my way"));
    EXPECT_EQ(view.notificationsTab()->replyText(), QStringLiteral("onmy way"));
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
    show(Tab::notifications);
    for (const auto key : {Qt::Key_Escape, Qt::Key_Return}) {
        focus("Reply");
        type(Qt::Key_Space);
        ASSERT_TRUE(hasFocus("Type reply..."));
        type(key);
        EXPECT_TRUE(hasFocus("Reply"));
        EXPECT_TRUE(quickView().activeFocusItem()->property("visualFocus").toBool());
    }
}

TEST_F(ListKeyboard, AReplyComesBackWithItsRowAndLeavesTheListWhereItIs) {
    for (int number = 0; number < manyRows; ++number) {
        notify("App " + std::to_string(number));
    }
    show(Tab::notifications);
    press(QStringLiteral("Reply"));
    type(QStringLiteral("on my way"));
    auto* list = item(QAccessible::List, QStringLiteral("Notifications"));
    const auto scrollTo = [this, list](double place) {
        list->setProperty("contentY", place);
        settle();
        settle();
        return list->property("contentY").toDouble();
    };
    EXPECT_EQ(scrollTo(1500), 1500);
    EXPECT_EQ(find(QAccessible::EditableText, QStringLiteral("Type reply...")), nullptr);
    EXPECT_EQ(scrollTo(700), 700);
    EXPECT_EQ(scrollTo(40), 40) << "the row is made again, and does not pull the list to itself";
    EXPECT_NEAR(scrollTo(0), 0, 8);
    auto* field = find(QAccessible::EditableText, QStringLiteral("Type reply..."));
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->text(QAccessible::Value), QStringLiteral("on my way"));
}

TEST_F(ListKeyboard, PagesAndListsScrollByThePageKeys) {
    for (int number = 0; number < manyRows; ++number) {
        notify("App");
        store->addClipboard(textOfRow(number));
        FileTransferRecord record;
        record.id = QUuid::createUuid();
        record.fileName = textOfRow(number);
        store->addFileTransfer(record);
    }
    for (const auto tab : {Tab::notifications, Tab::clipboard, Tab::fileDrop, Tab::remote}) {
        show(tab);
        quickView().resize(800, 500);
        settle();
        const auto* scroller = quickView().activeFocusItem();
        ASSERT_TRUE(scroller->inherits("QQuickFlickable")) << tab;
        for (int press = 0; press < 30; ++press) {
            type(Qt::Key_PageDown);
        }
        EXPECT_TRUE(scroller->property("atYEnd").toBool()) << tab;
        type(Qt::Key_Home);
        EXPECT_TRUE(scroller->property("atYBeginning").toBool()) << tab;
    }
}

TEST_F(ListKeyboard, ATextThatWasClickedHasNoRing) {
    store->addClipboard(QStringLiteral("some text"));
    show(Tab::clipboard);
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
