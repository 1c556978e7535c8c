#pragma once

#include "fakes/TestView.h"
#include "shell/QmlMainWindow.h"
#include "shell/Tab.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QQuickView>

#include <gtest/gtest.h>

namespace brenvale {

/// The main window over the in-memory desktop, read and worked as assistive technology does.
struct ShownWindow : testing::Test, TestView {
    ShownWindow() { QAccessible::setActive(true); }

    void show(Tab::Number tab) {
        view.setSelectedTab(tab);
        window.makeKeyAndOrderFront();
        settle();
    }

    void close() {
        window.view()->close();
        settle();
    }

    /// Lets everything happen that is under way.
    void settle() {
        for (int pass = 0; pass < 3; ++pass) {
            run();
            QCoreApplication::processEvents();
        }
    }

    /// The first control or text of that name that is on show; null where there is none.
    [[nodiscard]] QAccessibleInterface* find(const QString& name) const {
        return find(QAccessible::queryAccessibleInterface(window.view()), name);
    }

    [[nodiscard]] bool shows(const char* name) const { return find(QString::fromUtf8(name)) != nullptr; }

    /// False where there is nothing of that name to press.
    [[nodiscard]] bool press(const char* name) {
        auto* control = find(QString::fromUtf8(name));
        if (control == nullptr || control->actionInterface() == nullptr) {
            return false;
        }
        control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        settle();
        return true;
    }

    [[nodiscard]] QStringList namesOf(QAccessible::Role role) const {
        QStringList names;
        collect(QAccessible::queryAccessibleInterface(window.view()), role, names);
        return names;
    }

    QmlMainWindow window{view};

private:
    static bool isShown(QAccessibleInterface* node) { return node->isValid() && !node->state().invisible; }

    static QAccessibleInterface* find(QAccessibleInterface* node, const QString& name) {
        for (int place = 0; place < node->childCount(); ++place) {
            auto* child = node->child(place);
            if (child == nullptr || !isShown(child)) {
                continue;
            }
            if (child->text(QAccessible::Name) == name && child->role() != QAccessible::Grouping &&
                child->role() != QAccessible::ListItem) {
                return child;
            }
            if (auto* found = find(child, name)) {
                return found;
            }
            if (child->text(QAccessible::Name) == name) {
                return child;
            }
        }
        return nullptr;
    }

    static void collect(QAccessibleInterface* node, QAccessible::Role role, QStringList& names) {
        for (int place = 0; place < node->childCount(); ++place) {
            auto* child = node->child(place);
            if (child != nullptr && isShown(child)) {
                if (child->role() == role) {
                    names.append(child->text(QAccessible::Name));
                }
                collect(child, role, names);
            }
        }
    }
};

} // namespace brenvale
