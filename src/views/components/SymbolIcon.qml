pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// An icon named by its symbol identifier ("folder.fill"), drawn from the icon font.
Text {
    id: root
    property string symbol
    property real size: 16

    text: Icons.glyph(symbol)
    font.family: Icons.fontFamily
    font.pixelSize: size
    renderType: Text.QtRendering
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
