import QtQuick
import Brenvale

Item {
    id: tab

    required property SettingsView view
}
