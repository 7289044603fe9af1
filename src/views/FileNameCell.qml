pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The file's name over the folder that holds it, each on one line.
Column {
    id: root
    property string name
    property string folder
    property color textColor: Theme.primaryText
    property color secondaryColor: Theme.secondaryText

    spacing: 1
    Text {
        width: root.width
        text: root.name
        elide: Text.ElideMiddle
        maximumLineCount: 1
        font.pixelSize: 13
        font.weight: Font.Medium
        color: root.textColor
    }
    Text {
        width: root.width
        text: root.folder
        elide: Text.ElideMiddle
        maximumLineCount: 1
        font.pixelSize: 10
        color: root.secondaryColor
    }
}
