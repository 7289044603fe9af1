pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import Ravelinth

// "Linked" for a file whose data has other names (hard links): moving this one name to the Trash
// leaves the data where the others point, so it frees nothing. The tooltip says so.
Rectangle {
    id: root
    property bool onSelectedRow: false
    readonly property color tint: Theme.readable(
        Theme.over(Theme.secondaryText, Theme.textBackground), color, 4.5)
    readonly property string explanation: "This file has other names (hard links). Moving it to "
                                          + "the Trash frees no space while the other names exist."

    implicitWidth: label.implicitWidth + 16
    implicitHeight: label.implicitHeight + 6
    radius: 4
    color: onSelectedRow ? Theme.textBackground
                         : Theme.over(Theme.withOpacity(Theme.gray, 0.15), Theme.textBackground)

    Text {
        id: label
        objectName: "badgeText"
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        text: "Linked"
        font.pixelSize: 11
        font.weight: Font.Medium
        color: root.tint
    }
    HoverHandler {
        id: hover
    }
    ToolTip.visible: hover.hovered
    ToolTip.delay: 600
    ToolTip.text: explanation
}
