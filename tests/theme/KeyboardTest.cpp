#include "theme/QmlSetup.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickView>
#include <QTest>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

/// A place beside a tab that declares its home. The names are those of the items.
constexpr const char* scene = R"(
import QtQuick
import Brenvale

Rectangle {
    id: root

    property Item tab: first

    width: 200
    height: 200
    Keys.onPressed: event => event.accepted = keyboard.takeUnwanted(event.key, event.modifiers, event.text)

    Keyboard {
        id: keyboard

        tab: root.tab
    }
    Item {
        id: beside

        objectName: "beside"
        activeFocusOnTab: true
        property int focusReason: Qt.MouseFocusReason
    }
    Item {
        id: first

        objectName: "first"
        width: 200
        height: 100
        Keyboard.home: firstHome

        Item {
            id: firstHome

            objectName: "firstHome"
            property string typed
            Keys.onPressed: event => {
                event.accepted = event.text !== "";
                typed += event.text;
            }
        }
        Item {
            objectName: "part"
            Keyboard.home: partHome

            Item {
                id: partHome

                objectName: "partHome"
            }
            Item {
                objectName: "button"
                property int presses: 0
                Keys.onReturnPressed: ++presses
                Keys.onSpacePressed: ++presses
            }
            TextInput {
                objectName: "field"
            }
        }
    }
    Flickable {
        id: second

        objectName: "second"
        width: 200
        height: 100
        contentHeight: 1000
        Keyboard.home: second
        Keyboard.isEager: true

        Item {
            objectName: "far"
            y: 900
            height: 20
        }
    }
}
)";

struct KeyboardOwner : testing::Test {
    KeyboardOwner() {
        chooseQuickRenderer();
        setUpEngine(*view.engine());
        QQmlComponent component(view.engine());
        component.setData(scene, QUrl(QStringLiteral("qrc:/Scene.qml")));
        root = qobject_cast<QQuickItem*>(component.create());
        EXPECT_NE(root, nullptr) << component.errorString().toStdString();
        view.setContent({}, &component, root);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    }

    QQuickItem& item(const char* name) const {
        return *root->findChild<QQuickItem*>(QString::fromUtf8(name));
    }

    void give(const char* name) const { item(name).forceActiveFocus(); }

    void showTab(const char* name) const {
        root->setProperty("tab", QVariant::fromValue(&item(name)));
        QCoreApplication::processEvents();
    }

    std::string owner() {
        QCoreApplication::processEvents();
        const auto* item = view.activeFocusItem();
        return item == nullptr ? "nobody" : item->objectName().toStdString();
    }

    void hold(Qt::Key key, const QString& text) {
        for (const bool isRepeat : {false, true, true}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text, isRepeat);
            QCoreApplication::sendEvent(&view, &press);
        }
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&view, &release);
    }

    QQuickView view;
    QQuickItem* root = nullptr;
};

} // namespace

TEST_F(KeyboardOwner, IsTheHomeOfTheTabThatShows) {
    EXPECT_EQ(owner(), "firstHome");
    showTab("second");
    EXPECT_EQ(owner(), "second");
}

TEST_F(KeyboardOwner, StaysBesideTheTabWhenAnotherShows) {
    showTab("second");
    give("beside");
    showTab("first");
    EXPECT_EQ(owner(), "beside");
}

TEST_F(KeyboardOwner, IsTheHomeOfAnEagerTabUnlessTheUserWalksBesideIt) {
    give("beside");
    showTab("second");
    EXPECT_EQ(owner(), "second");
    showTab("first");
    item("beside").setProperty("focusReason", static_cast<int>(Qt::TabFocusReason));
    give("beside");
    showTab("second");
    EXPECT_EQ(owner(), "beside");
}

TEST_F(KeyboardOwner, IsTheNearestHomeOnceItHides) {
    give("button");
    item("button").setVisible(false);
    EXPECT_EQ(owner(), "partHome");
}

TEST_F(KeyboardOwner, IsTheNearestHomeOnceItIsDisabled) {
    give("button");
    item("button").setEnabled(false);
    EXPECT_EQ(owner(), "partHome");
}

TEST_F(KeyboardOwner, IsTheNearestHomeOnceItIsGone) {
    give("button");
    delete &item("button");
    EXPECT_EQ(owner(), "partHome");
}

TEST_F(KeyboardOwner, IsTheHomeFurtherOutWhereTheNearestIsGoneToo) {
    give("button");
    delete &item("part");
    EXPECT_EQ(owner(), "firstHome");
}

TEST_F(KeyboardOwner, IsTheHomeOfTheTabOnceWhatIsBesideItHides) {
    give("beside");
    item("beside").setVisible(false);
    EXPECT_EQ(owner(), "firstHome");
}

TEST_F(KeyboardOwner, IsWhoeverWasGivenItMeanwhile) {
    give("button");
    item("button").setVisible(false);
    give("field");
    EXPECT_EQ(owner(), "field");
}

TEST_F(KeyboardOwner, AKeyThatIsHeldPressesOnce) {
    give("button");
    hold(Qt::Key_Return, QStringLiteral("\r"));
    EXPECT_EQ(item("button").property("presses"), 1);
    hold(Qt::Key_Space, QStringLiteral(" "));
    EXPECT_EQ(item("button").property("presses"), 2);
}

TEST_F(KeyboardOwner, BlanksAndLettersRepeatWhereOneTypes) {
    give("field");
    hold(Qt::Key_Space, QStringLiteral(" "));
    hold(Qt::Key_A, QStringLiteral("a"));
    EXPECT_EQ(item("field").property("text"), QStringLiteral("   aaa"));
}

TEST_F(KeyboardOwner, WhoBeginsToTypeBesideTheTabGoesOnInIt) {
    give("beside");
    QTest::keyClick(&view, '7');
    EXPECT_EQ(item("firstHome").property("typed"), QStringLiteral("7"));
    EXPECT_EQ(owner(), "firstHome");
}

TEST_F(KeyboardOwner, ReturnAndSpaceBesideTheTabAreNotPassedOn) {
    give("beside");
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Space);
    EXPECT_EQ(item("firstHome").property("typed"), QString());
    EXPECT_EQ(owner(), "beside");
}

TEST_F(KeyboardOwner, ScrollsByTheKeysThatNothingWants) {
    showTab("second");
    const auto place = [this] {
        return item("second").property("contentY").toDouble();
    };
    QTest::keyClick(&view, Qt::Key_Down);
    EXPECT_EQ(place(), 48);
    QTest::keyClick(&view, Qt::Key_PageDown);
    EXPECT_EQ(place(), 48 + 90);
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(place(), 900);
    QTest::keyClick(&view, Qt::Key_PageDown);
    EXPECT_EQ(place(), 900);
    QTest::keyClick(&view, Qt::Key_PageUp);
    EXPECT_EQ(place(), 900 - 90);
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_EQ(place(), 0);
}

TEST_F(KeyboardOwner, ComesIntoSight) {
    showTab("second");
    give("far");
    EXPECT_EQ(item("second").property("contentY"), 900 + 20 + 16 - 100);
}
