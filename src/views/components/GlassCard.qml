pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// A translucent card: the content, padded, on a frosted rounded rectangle with a faint light
// border and a soft drop shadow.
Pane {
    id: root
    property real cornerRadius: 16
    padding: 20

    background: CardBackground {
        cornerRadius: root.cornerRadius
    }
}
