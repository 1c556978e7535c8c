import QtQuick

Item {
    id: tab

    required property var view
}
