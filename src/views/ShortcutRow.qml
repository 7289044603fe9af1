pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// One line of the shortcut reference: what it does, and its keys on a small key cap.
RowLayout {
    id: root
    property string keys
    property string action

    Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        text: root.action
        font.pixelSize: 13
        color: Theme.primaryText
    }
    Item {
        Layout.fillWidth: true
    }
    Rectangle {
        implicitWidth: keysText.implicitWidth + 16
        implicitHeight: keysText.implicitHeight + 8
        radius: 4
        color: Theme.withOpacity(Theme.gray, 0.15)
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            id: keysText
            anchors.centerIn: parent
            text: root.keys
            font.pixelSize: 12
            font.family: Theme.monospaceFamily
            color: Theme.primaryText
        }
    }
}
