import QtQuick
import Brenvale

// Whether the phone is linked, where it finds this computer, and what the desktop allows.
ScrollPage {
    id: tab

    required property SettingsState settings

    Component.onCompleted: settings.appeared()

    SectionCard {
        header: "Server & Network"
        footer: "Tip: For a permanent connection, reserve this IP address for your Mac in your router's DHCP settings. This prevents the address from changing and disconnecting your Android device."

        SectionRow {
            label: "Status"

            ConnectionStatus {
                width: parent.width
                settings: tab.settings
            }
        }
        SectionRow {
            label: "Local IP"

            Row {
                anchors.right: parent.right
                anchors.rightMargin: (Math.round(copyButton.symbolSize * Theme.iconScale) - copyButton.width) / 2 // the icon ends where other rows do
                spacing: 4

                SelectableText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: tab.settings.localIP
                    font: Theme.monospaced(Theme.body, Font.Bold)
                    wrapMode: TextEdit.NoWrap
                }
                IconButton {
                    id: copyButton

                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "edit-copy"
                    symbolSize: Math.round(Theme.caption.pixelSize * 1.25 / Theme.iconScale)
                    helpText: "Copy IP address"
                    onClicked: tab.settings.copyLocalIP()
                }
            }
        }
        SectionRow {
            label: "Port"

            Row {
                anchors.right: parent.right
                spacing: 8

                Keyboard.home: port // once Restart has done its work

                PortField {
                    id: port

                    settings: tab.settings
                }
                TextButton {
                    anchors.verticalCenter: parent.verticalCenter
                    enabled: tab.settings.serverRestartNeeded || port.isEdited
                    opacity: enabled ? 1 : 0 // the field does not move when it comes
                    text: "Restart"
                    isProminent: true
                    controlSize: "small"
                    onClicked: {
                        port.commit();
                        tab.settings.restartServer();
                    }
                }
            }
        }
    }
    SectionCard {
        header: "Notifications"

        SectionRow {
            visible: tab.settings.notifAuthStatus === 0

            TextButton {
                text: "Request Permission"
                onClicked: tab.settings.requestNotificationPermission()
            }
        }
        SectionRow {
            visible: tab.settings.notifAuthStatus === 1

            TextButton {
                text: "Blocked - Open System Settings"
                color: Theme.readable(Theme.red)
                onClicked: tab.settings.openNotificationSettings()
            }
        }
        SectionRow {
            visible: tab.settings.notifAuthStatus >= 2 && tab.settings.notifAuthStatus <= 4
            label: "Enabled"
            symbol: "notifications"
            symbolColor: Theme.green
        }
    }
    SectionCard {
        header: "General"

        SectionRow {
            label: "Launch at login"

            ToggleSwitch {
                anchors.right: parent.right
                helpText: "Launch at login"
                checked: tab.settings.launchAtLogin
                onCheckedChanged: tab.settings.launchAtLogin = checked
            }
        }
    }
}
