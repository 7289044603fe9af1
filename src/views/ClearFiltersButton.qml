pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// "Clear Filters": empties the search text and the category filter.
Rectangle {
    id: root
    function trigger() {
        RavelinthViewModel.fileList.searchText = ""
        RavelinthViewModel.fileList.categoryFilter = -1
    }

    implicitWidth: row.implicitWidth + 16
    implicitHeight: 24
    radius: 6
    color: tap.pressed ? Theme.withOpacity(Theme.gray, 0.2) : Theme.textBackground
    border.width: 1
    border.color: Theme.withOpacity(Theme.gray, 0.35)
    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: "Clear Filters"
    Accessible.onPressAction: trigger()
    Keys.onSpacePressed: trigger()
    Keys.onReturnPressed: trigger()
    Keys.onEnterPressed: trigger()
    FocusRing {
        shown: root.activeFocus
        radius: 8
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 4
        SymbolIcon {
            symbol: "xmark.circle"
            size: 14
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: "Clear Filters"
            font.pixelSize: 12
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
    TapHandler {
        id: tap
        onTapped: root.trigger()
    }
}
