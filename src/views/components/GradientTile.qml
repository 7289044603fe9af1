pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// A rounded square filled with the accent gradient from the top-leading to the bottom-trailing
// corner (a Rectangle's gradient only runs straight down or across).
Canvas {
    id: root
    property real cornerRadius: 8
    property color startColor: Theme.accentGradientStart
    property color endColor: Theme.accentGradientEnd

    onWidthChanged: requestPaint()
    onHeightChanged: requestPaint()
    onStartColorChanged: requestPaint()
    onEndColorChanged: requestPaint()

    onPaint: {
        const ctx = getContext("2d")
        ctx.reset()
        const r = Math.min(cornerRadius, width / 2, height / 2)
        ctx.beginPath()
        ctx.moveTo(r, 0)
        ctx.arcTo(width, 0, width, height, r)
        ctx.arcTo(width, height, 0, height, r)
        ctx.arcTo(0, height, 0, 0, r)
        ctx.arcTo(0, 0, width, 0, r)
        ctx.closePath()
        const gradient = ctx.createLinearGradient(0, 0, width, height)
        gradient.addColorStop(0, startColor)
        gradient.addColorStop(1, endColor)
        ctx.fillStyle = gradient
        ctx.fill()
    }
}
