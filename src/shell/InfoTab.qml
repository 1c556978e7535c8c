import QtQuick
import Brenvale

// What the program is and who makes it.
ScrollPage {
    SectionCard {
        SectionRow {
            Row {
                topPadding: 8
                bottomPadding: 8
                spacing: 16

                Image {
                    width: 64
                    height: 64
                    sourceSize.width: 64
                    sourceSize.height: 64
                    source: "image://symbol/application"
                    Accessible.role: Accessible.Graphic
                    Accessible.name: "Brenvale"
                }
                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 2

                    Label {
                        text: "Brenvale"
                        font: Theme.title2Bold
                    }
                    Label {
                        text: "Version 1.0 (Build 1)"
                        font: Theme.subheadline
                        color: Theme.secondary
                    }
                }
            }
        }
    }
    SectionCard {
        header: "Description"

        SectionRow {
            Label {
                width: parent.width
                text: "Professional notification bridging between Android and macOS. Secure, local, and real-time communication over your WiFi network."
                color: Theme.secondary
                wrapMode: Text.Wrap
            }
        }
    }
    SectionCard {
        header: "Developer"

        SectionRow {
            label: "Name"

            Label {
                anchors.right: parent.right
                text: Developer.name
                color: Theme.secondary
            }
        }
        SectionRow {
            visible: Developer.profileAddress !== ""

            LinkButton {
                text: "Visit Profile"
                target: Developer.profileAddress
            }
        }
    }
    SectionCard {
        header: "Support the Project"

        SectionRow {
            label: "Support via Paylane"
            symbol: "love"
            symbolColor: Theme.red

            SelectableText {
                anchors.right: parent.right
                text: Developer.accountNumber
                font: Theme.headline
                wrapMode: TextEdit.NoWrap
            }
        }
    }
}
