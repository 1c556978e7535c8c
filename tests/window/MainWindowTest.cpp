#include "ShownWindow.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QQuickItem>
#include <QScreen>
#include <QTest>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>

using namespace brenvale;
using testing::ElementsAre;

namespace {

using MainWindowTest = ShownWindow;
using SidebarTest = ShownWindow;

} // namespace

TEST_F(MainWindowTest, NothingOfItExistsBeforeItIsShown) {
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.view(), nullptr);
    EXPECT_TRUE(fake.userNotificationCenter.calls.isEmpty());
}

TEST_F(MainWindowTest, HasItsTitleAndItsSizes) {
    show(Tab::info);
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.view()->title(), QStringLiteral("Brenvale Settings"));
    EXPECT_EQ(window.view()->size(), QSize(850, 550));
    EXPECT_EQ(window.view()->minimumSize(), QSize(800, 500));
}

TEST_F(MainWindowTest, EachOpeningAsksForBothHistories) {
    connect();
    for (int opening = 0; opening < 2; ++opening) {
        show(Tab::info);
        EXPECT_EQ(takeSent().size(), 2U);
        close();
    }
}

TEST_F(MainWindowTest, ShowingItAgainWhileItIsOpenAsksForNothing) {
    connect();
    show(Tab::info);
    (void)takeSent();
    show(Tab::settings);
    EXPECT_TRUE(takeSent().empty());
}

TEST_F(MainWindowTest, OpeningOnTheSmsTabAsksForEachLogTwice) {
    connect();
    show(Tab::sms);
    const auto sent = takeSent();
    EXPECT_EQ(std::ranges::count_if(sent, [](const auto& text) { return text.contains("sms_history"); }), 2);
    EXPECT_EQ(std::ranges::count_if(sent, [](const auto& text) { return text.contains("call_history"); }), 2);
}

TEST_F(MainWindowTest, EachTabIsBuiltOnce) {
    constexpr std::array tabs{"SettingsTab", "NotificationsTab", "SendSmsTab",   "InfoTab",
                              "CallsTab",    "FileDropTab",      "ClipboardTab", "RemoteControlTab"};
    for (int tab = 0; tab < std::ssize(tabs); ++tab) {
        view.setSelectedTab(tab);
        window.makeKeyAndOrderFront(); // what is thrown away stands here until events are handled
        const auto objects = window.view()->rootObject()->findChildren<QObject*>();
        EXPECT_EQ(std::ranges::count_if(objects,
                                        [&](const QObject* object) {
                                            return QByteArray(object->metaObject()->className())
                                                .startsWith(tabs.at(static_cast<std::size_t>(tab)));
                                        }),
                  1)
            << tabs.at(static_cast<std::size_t>(tab));
        close();
    }
}

TEST_F(MainWindowTest, ClosingItTellsAndGivesBackWhatShowingItTook) {
    int closings = 0;
    window.windowWillClose = [&closings] {
        ++closings;
    };
    show(Tab::info);
    close();
    EXPECT_EQ(closings, 1);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.view(), nullptr);
}

TEST_F(MainWindowTest, ComesBackAsItWas) {
    receive(R"({"app":"Chat","title":"Ann","body":"Lunch?"})");
    show(Tab::notifications);
    ASSERT_TRUE(press("Reply"));
    view.notificationsTab()->setReplyText(QStringLiteral("On my way"));
    window.view()->resize(900, 600);
    close();
    show(Tab::notifications);
    EXPECT_EQ(window.view()->size(), QSize(900, 600));
    EXPECT_TRUE(shows("Type reply..."));
    EXPECT_EQ(view.notificationsTab()->replyText(), QStringLiteral("On my way"));
}

TEST_F(MainWindowTest, ComesBackInSightWhereItsScreenIsGone) {
    show(Tab::info);
    window.view()->setPosition(20'000, 15'000);
    close();
    show(Tab::info);
    EXPECT_TRUE(window.view()->screen()->geometry().contains(window.view()->geometry().center()));
    window.view()->setPosition(20'000, 15'000);
    show(Tab::info);
    EXPECT_TRUE(window.view()->screen()->geometry().contains(window.view()->geometry().center()));
}

TEST_F(MainWindowTest, FollowsTheDesktopsColoursWhileItIsOnShow) {
    const auto before = QGuiApplication::palette();
    show(Tab::info);
    const auto background = [this] {
        return window.view()->rootObject()->property("color").value<QColor>();
    };
    for (const auto& color : {QColor(20, 20, 20), QColor(250, 250, 250)}) {
        auto palette = before;
        palette.setColor(QPalette::Window, color);
        QGuiApplication::setPalette(palette);
        settle();
        EXPECT_EQ(background(), color);
    }
    QGuiApplication::setPalette(before);
}

TEST_F(MainWindowTest, FollowsTheDesktopsFontWhileItIsOnShow) {
    const auto before = QGuiApplication::font();
    show(Tab::info);
    const auto textHeight = [this] {
        return find(QStringLiteral("Version 1.0 (Build 1)"))->rect().height();
    };
    const auto usual = textHeight();
    auto large = before;
    large.setPixelSize(2 * QFontInfo(before).pixelSize());
    QGuiApplication::setFont(large);
    settle();
    EXPECT_GT(textHeight(), usual * 3 / 2);
    QGuiApplication::setFont(before);
    settle();
    EXPECT_EQ(textHeight(), usual);
}

TEST_F(MainWindowTest, ComesBackMaximisedAndRemembersItsNormalSize) {
    show(Tab::info);
    window.view()->resize(900, 600);
    settle();
    window.view()->showMaximized();
    settle();
    close();
    show(Tab::info);
    EXPECT_TRUE(window.view()->windowStates().testFlag(Qt::WindowMaximized));
    close();
    show(Tab::info);
    window.view()->showNormal();
    settle();
    close();
    show(Tab::info);
    EXPECT_FALSE(window.view()->windowStates().testFlag(Qt::WindowMaximized));
}

TEST_F(MainWindowTest, ComesBackOnAScreenThatExists) {
    show(Tab::info);
    window.view()->setGeometry(100'000, 100'000, 900, 600);
    settle();
    close();
    show(Tab::info);
    EXPECT_TRUE(window.view()->screen()->geometry().intersects(window.view()->geometry()));
    EXPECT_EQ(window.view()->size(),
              QSize(900, 600).boundedTo(window.view()->screen()->size()).expandedTo(QSize(800, 500)));
}

TEST_F(MainWindowTest, ControlAndWCloseIt) {
    show(Tab::info);
    QTest::keyClick(window.view(), Qt::Key_W, Qt::ControlModifier);
    settle();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(MainWindowTest, ShowsTheTabThatTheSettingsName) {
    show(Tab::info);
    EXPECT_TRUE(shows("Version 1.0 (Build 1)"));
    fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), Tab::clipboard);
    settle();
    EXPECT_FALSE(shows("Version 1.0 (Build 1)"));
    EXPECT_TRUE(shows("No received items yet"));
}

TEST_F(SidebarTest, HasAllTabsInItsOrder) {
    show(Tab::info);
    EXPECT_THAT(namesOf(QAccessible::ListItem),
                ElementsAre(QStringLiteral("Call"), QStringLiteral("SMS"), QStringLiteral("File Drop"),
                            QStringLiteral("Notifications"), QStringLiteral("Remote"),
                            QStringLiteral("Clipboard"), QStringLiteral("Settings"), QStringLiteral("Info")));
}

TEST_F(SidebarTest, AnEntryOpensItsTab) {
    show(Tab::info);
    ASSERT_TRUE(press("Clipboard"));
    EXPECT_EQ(view.selectedTab(), Tab::clipboard);
    EXPECT_EQ(fake.userDefaults.integer(u"selectedSettingsTab"), Tab::clipboard);
    EXPECT_TRUE(shows("No received items yet"));
}

TEST_F(SidebarTest, AnUnknownTabSelectsNothingAndAnyEntryRecovers) {
    fake.userDefaults.set(QStringLiteral("selectedSettingsTab"), 99);
    window.makeKeyAndOrderFront();
    settle();
    EXPECT_FALSE(find(QStringLiteral("Call"))->state().selected);
    ASSERT_TRUE(press("Info"));
    EXPECT_TRUE(find(QStringLiteral("Info"))->state().selected);
}

TEST_F(SidebarTest, AClickGivesItTheKeyboard) {
    show(Tab::info);
    const auto place = find(QStringLiteral("Clipboard"))->rect().center() - window.view()->position();
    QTest::mouseClick(window.view(), Qt::LeftButton, {}, place);
    settle();
    ASSERT_EQ(view.selectedTab(), Tab::clipboard);
    QTest::keyClick(window.view(), Qt::Key_Down);
    settle();
    EXPECT_EQ(view.selectedTab(), Tab::settings);
    auto* focused = QAccessible::queryAccessibleInterface(window.view()->activeFocusItem());
    EXPECT_EQ(focused->text(QAccessible::Name), QStringLiteral("Settings")) << "the entry itself is focused";
    EXPECT_EQ(focused->role(), QAccessible::ListItem);
}

TEST_F(SidebarTest, CanBeHiddenAndComesBack) {
    show(Tab::info);
    ASSERT_TRUE(press("Hide Sidebar"));
    EXPECT_FALSE(shows("File Drop"));
    ASSERT_TRUE(press("Show Sidebar"));
    EXPECT_TRUE(shows("File Drop"));
}
