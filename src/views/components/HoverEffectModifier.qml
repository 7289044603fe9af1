pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// Grows its target a little while the pointer is over it. Place it inside the item to affect.
HoverHandler {
    id: root
    property real scale: 1.02
    readonly property bool isHovered: hovered

    onHoveredChanged: {
        animation.to = hovered ? scale : 1.0
        animation.restart()
    }

    property NumberAnimation animation: NumberAnimation {
        target: root.target
        property: "scale"
        duration: 200
        easing.type: Easing.InOutQuad
    }
}
