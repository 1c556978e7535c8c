#pragma once

#include "fakes/TestView.h"
#include "shell/QmlMainWindow.h"
#include "shell/Tab.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

#include <string>
#include <vector>

namespace brenvale {

/// The main window over the in-memory desktop, seen as assistive technology sees it and used as people use
/// it. Nothing is shown before `show`.
class TestWindow : public TestView {
public:
    void show(Tab::Number tab);

    /// The control that is on show with this role and name; null where there is none.
    [[nodiscard]] QAccessibleInterface* find(QAccessible::Role role, const QString& name);
    [[nodiscard]] QQuickItem* item(QAccessible::Role role, const QString& name);
    [[nodiscard]] bool shows(const QString& text);

    /// The names of all that is on show with this role, from top to bottom.
    [[nodiscard]] std::vector<std::string> names(QAccessible::Role role);

    /// Presses a button by way of assistive technology.
    void press(const QString& name);
    void click(const QQuickItem& item);

    void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void type(const QString& characters);

    /// The names of the control that has the keyboard and of all that it stands in, from the inside out.
    [[nodiscard]] std::vector<std::string> focusPath();
    [[nodiscard]] bool hasFocus(const std::string& name);

    /// Walks to the control of this name with `Tab` and `modifiers`.
    void focus(const std::string& name, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// The names on the paths of all that `Tab` with `modifiers` reaches, once around.
    [[nodiscard]] std::vector<std::string> tabOrder(Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// The "command", or the "action" where there is none, of what the phone got since.
    [[nodiscard]] std::vector<std::string> takeCommands();

    /// Lets the window act on what happened.
    void settle();

    /// Items on show whose type begins with `typeName`.
    [[nodiscard]] QList<QQuickItem*> itemsOf(const char* typeName);

    [[nodiscard]] QQuickView& quickView() { return *window_.view(); }

private:
    [[nodiscard]] QList<QAccessibleInterface*> all();

    QmlMainWindow window_{view};
};

} // namespace brenvale
