#include "TestWindow.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <iterator>

namespace brenvale {

namespace {

/// More than any tab has.
constexpr int mostControls = 60;

void gather(QAccessibleInterface* interface, QList<QAccessibleInterface*>& found) {
    if (interface == nullptr || interface->state().invisible) {
        return;
    }
    found.append(interface);
    for (int i = 0; i < interface->childCount(); ++i) {
        gather(interface->child(i), found);
    }
}

void gatherItems(QQuickItem* item, const QByteArray& prefix, QList<QQuickItem*>& found) {
    if (!item->isVisible()) {
        return;
    }
    if (QByteArray(item->metaObject()->className()).startsWith(prefix)) {
        found.append(item);
    }
    for (auto* child : item->childItems()) {
        gatherItems(child, prefix, found);
    }
}

} // namespace

void TestWindow::show(Tab::Number tab) {
    view.setSelectedTab(tab);
    if (!phone) {
        connect();
    }
    window_.makeKeyAndOrderFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&quickView()));
    settle();
}

void TestWindow::settle() {
    for (int pass = 0; pass < 3; ++pass) {
        run();
        QCoreApplication::processEvents();
    }
    (void)quickView().grabWindow(); // lists lay out for a picture only
    QCoreApplication::processEvents();
}

QList<QAccessibleInterface*> TestWindow::all() {
    QList<QAccessibleInterface*> found;
    gather(QAccessible::queryAccessibleInterface(&quickView()), found);
    return found;
}

QAccessibleInterface* TestWindow::find(QAccessible::Role role, const QString& name) {
    const auto interfaces = all();
    const auto match = std::ranges::find_if(interfaces, [&](auto* interface) {
        return interface->role() == role && interface->text(QAccessible::Name) == name;
    });
    return match == interfaces.end() ? nullptr : *match;
}

QQuickItem* TestWindow::item(QAccessible::Role role, const QString& name) {
    auto* interface = find(role, name);
    return interface == nullptr ? nullptr : qobject_cast<QQuickItem*>(interface->object());
}

bool TestWindow::shows(const QString& text) {
    return std::ranges::any_of(all(),
                               [&](auto* interface) { return interface->text(QAccessible::Name) == text; });
}

std::vector<std::string> TestWindow::names(QAccessible::Role role) {
    std::vector<std::string> texts;
    for (auto* interface : all()) {
        if (interface->role() == role) {
            texts.push_back(interface->text(QAccessible::Name).toStdString());
        }
    }
    return texts;
}

void TestWindow::press(const QString& name) {
    auto* interface = find(QAccessible::Button, name);
    ASSERT_NE(interface, nullptr) << "no button \"" << name.toStdString() << '"';
    ASSERT_NE(interface->actionInterface(), nullptr);
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    settle();
}

void TestWindow::click(const QQuickItem& item) {
    const auto centre = item.mapToScene(QPointF(item.width() / 2, item.height() / 2)).toPoint();
    QTest::mouseClick(&quickView(), Qt::LeftButton, {}, centre);
    settle();
}

void TestWindow::type(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&quickView(), key, modifiers);
    settle();
}

void TestWindow::type(const QString& characters) {
    for (const auto character : characters) {
        QTest::keyClick(&quickView(), character.toLatin1());
    }
    settle();
}

std::vector<std::string> TestWindow::focusPath() {
    std::vector<std::string> path;
    for (auto* item = quickView().activeFocusItem(); item != nullptr; item = item->parentItem()) {
        auto* interface = QAccessible::queryAccessibleInterface(item);
        if (interface != nullptr && !interface->text(QAccessible::Name).isEmpty()) {
            path.push_back(interface->text(QAccessible::Name).toStdString());
        }
    }
    return path;
}

bool TestWindow::hasFocus(const std::string& name) {
    return std::ranges::count(focusPath(), name) > 0;
}

void TestWindow::focus(const std::string& name, Qt::KeyboardModifiers modifiers) {
    for (int i = 0; i < mostControls && !hasFocus(name); ++i) {
        type(Qt::Key_Tab, modifiers);
    }
    ASSERT_TRUE(hasFocus(name)) << name;
}

std::vector<std::string> TestWindow::tabOrder(Qt::KeyboardModifiers modifiers) {
    std::vector<std::string> order;
    type(Qt::Key_Tab, modifiers);
    const auto* first = quickView().activeFocusItem();
    for (int i = 0; i < mostControls && (i == 0 || quickView().activeFocusItem() != first); ++i) {
        std::ranges::copy(focusPath(), std::back_inserter(order));
        type(Qt::Key_Tab, modifiers);
    }
    return order;
}

std::vector<std::string> TestWindow::takeCommands() {
    std::vector<std::string> commands;
    for (const auto& text : takeSent()) {
        const auto message = QJsonDocument::fromJson(text).object();
        const auto command = message.value(QStringLiteral("command"));
        const auto action = message.value(QStringLiteral("action"));
        commands.push_back((command.isString() ? command : action).toString().toStdString());
    }
    return commands;
}

QList<QQuickItem*> TestWindow::itemsOf(const char* typeName) {
    QList<QQuickItem*> found;
    gatherItems(quickView().contentItem(), typeName, found);
    return found;
}

} // namespace brenvale
