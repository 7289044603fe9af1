pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The surface of a card: a translucent fill with a gradient border and a soft shadow. The
// shadow is painted with the card's own shape cut out of it, so it never darkens the
// translucent fill from below; everything is drawn on a Canvas so that it renders the same on
// the software backend as on the GPU.
Item {
    id: root
    property real cornerRadius: 16
    property color fillColor: Theme.material
    property real borderWidth: 1
    property color borderStart: Qt.rgba(1, 1, 1, 0.2)
    property color borderEnd: Qt.rgba(1, 1, 1, 0.05)
    property color shadowColor: Qt.rgba(0, 0, 0, 0.1)
    property real shadowBlur: 10
    property real shadowOffsetY: 5

    readonly property real overhang: shadowBlur * 2 + Math.abs(shadowOffsetY)

    onWidthChanged: canvas.requestPaint()
    onHeightChanged: canvas.requestPaint()
    onFillColorChanged: canvas.requestPaint()
    onBorderStartChanged: canvas.requestPaint()
    onShadowColorChanged: canvas.requestPaint()

    Canvas {
        id: canvas
        x: -root.overhang
        y: -root.overhang
        width: root.width + 2 * root.overhang
        height: root.height + 2 * root.overhang

        function roundedRect(ctx, x, y, w, h, r) {
            r = Math.min(r, w / 2, h / 2)
            ctx.beginPath()
            ctx.moveTo(x + r, y)
            ctx.arcTo(x + w, y, x + w, y + h, r)
            ctx.arcTo(x + w, y + h, x, y + h, r)
            ctx.arcTo(x, y + h, x, y, r)
            ctx.arcTo(x, y, x + w, y, r)
            ctx.closePath()
        }

        onPaint: {
            const ctx = getContext("2d")
            const o = root.overhang
            const w = root.width
            const h = root.height
            ctx.reset()
            if (w <= 0 || h <= 0)
                return

            // Shadow, then the card's shape cut out of it.
            ctx.save()
            ctx.shadowColor = root.shadowColor
            ctx.shadowBlur = root.shadowBlur
            ctx.shadowOffsetY = root.shadowOffsetY
            ctx.fillStyle = "black"
            roundedRect(ctx, o, o, w, h, root.cornerRadius)
            ctx.fill()
            ctx.restore()
            ctx.save()
            ctx.globalCompositeOperation = "destination-out"
            ctx.fillStyle = "black"
            roundedRect(ctx, o, o, w, h, root.cornerRadius)
            ctx.fill()
            ctx.restore()

            ctx.fillStyle = root.fillColor
            roundedRect(ctx, o, o, w, h, root.cornerRadius)
            ctx.fill()

            if (root.borderWidth > 0) {
                const half = root.borderWidth / 2
                const gradient = ctx.createLinearGradient(o, o, o + w, o + h)
                gradient.addColorStop(0, root.borderStart)
                gradient.addColorStop(1, root.borderEnd)
                ctx.strokeStyle = gradient
                ctx.lineWidth = root.borderWidth
                roundedRect(ctx, o + half, o + half, w - 2 * half, h - 2 * half,
                            root.cornerRadius - half)
                ctx.stroke()
            }
        }
    }
}
