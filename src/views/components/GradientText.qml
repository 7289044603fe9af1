pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// Text painted with a linear gradient from the top-leading to the bottom-trailing corner. Drawn
// on a Canvas, because layer effects paint nothing on the software backend.
Item {
    id: root
    property string text
    // Empty: the family plain Text would use.
    property string fontFamily: ""
    readonly property string resolvedFamily: probe.fontInfo.family
    property real pixelSize: 13
    property bool bold: false
    property color startColor: Theme.accentGradientStart
    property color endColor: Theme.accentGradientEnd

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    implicitWidth: Math.ceil(metrics.advanceWidth(text)) + 2
    implicitHeight: Math.ceil(metrics.height)

    // Canvas needs a concrete family name; a hidden Text resolves the one Text would draw with.
    Text {
        id: probe
        visible: false
        text: root.text
        font.family: root.fontFamily !== "" ? root.fontFamily : Qt.application.font.family
        font.pixelSize: root.pixelSize
        font.bold: root.bold
    }
    FontMetrics {
        id: metrics
        font: probe.font
    }

    onTextChanged: canvas.requestPaint()
    onResolvedFamilyChanged: canvas.requestPaint()
    onPixelSizeChanged: canvas.requestPaint()
    onStartColorChanged: canvas.requestPaint()
    onEndColorChanged: canvas.requestPaint()

    Canvas {
        id: canvas
        anchors.fill: parent
        onWidthChanged: requestPaint()
        onHeightChanged: requestPaint()
        onPaint: {
            const ctx = getContext("2d")
            ctx.reset()
            const gradient = ctx.createLinearGradient(0, 0, width, height)
            gradient.addColorStop(0, root.startColor)
            gradient.addColorStop(1, root.endColor)
            ctx.fillStyle = gradient
            ctx.font = (root.bold ? "bold " : "") + root.pixelSize + "px \"" + root.resolvedFamily + "\""
            ctx.textBaseline = "alphabetic"
            ctx.fillText(root.text, 1, metrics.ascent)
        }
    }
}
