pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The keyboard-focus outline every focusable control shares: a soft accent border just outside
// its parent, drawn only while `shown`. Controls that draw their own background put the same
// border on it instead.
Rectangle {
    property bool shown: false
    anchors.fill: parent
    anchors.margins: -2
    radius: 6
    color: "transparent"
    border.width: 2
    border.color: Theme.withOpacity(Theme.accent, 0.5)
    visible: shown
}
