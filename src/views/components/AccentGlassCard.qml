pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// A card that stands out: built like GlassCard, with a border and shadow in the accent colours.
Pane {
    id: root
    property real cornerRadius: 16
    padding: 20

    background: CardBackground {
        cornerRadius: root.cornerRadius
        borderWidth: 2
        borderStart: Theme.accentGradientStart
        borderEnd: Theme.accentGradientEnd
        shadowColor: Theme.withOpacity(Theme.accentGradientStart, 0.2)
        shadowBlur: 15
        shadowOffsetY: 8
    }
}
