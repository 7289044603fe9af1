pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// A spinner: a faint full ring under a short gradient arc that turns once a second. `size` is
// 20 by default; larger sizes scale the line with it.
Item {
    id: root
    property real size: 20
    readonly property real lineWidth: 3 * size / 20
    readonly property bool spinning: spin.running

    implicitWidth: size
    implicitHeight: size

    Canvas {
        id: canvas
        anchors.fill: parent
        antialiasing: true
        onWidthChanged: requestPaint()
        onPaint: {
            const ctx = getContext("2d")
            ctx.reset()
            const w = root.lineWidth
            const r = (Math.min(width, height) - w) / 2
            const cx = width / 2
            const cy = height / 2
            ctx.lineWidth = w
            ctx.lineCap = "butt"
            ctx.strokeStyle = Theme.withOpacity(Theme.gray, 0.2)
            ctx.beginPath()
            ctx.arc(cx, cy, r, 0, 2 * Math.PI)
            ctx.stroke()

            const gradient = ctx.createLinearGradient(0, 0, width, height)
            gradient.addColorStop(0, Theme.accentGradientStart)
            gradient.addColorStop(1, Theme.accentGradientEnd)
            ctx.strokeStyle = gradient
            ctx.lineCap = "round"
            ctx.beginPath()
            ctx.arc(cx, cy, r, 0, 0.3 * 2 * Math.PI)
            ctx.stroke()
        }
    }

    // The whole item turns: the faint ring is round, so only the arc appears to move.
    RotationAnimation on rotation {
        id: spin
        from: 0
        to: 360
        duration: 1000
        loops: Animation.Infinite
        running: root.visible
        direction: RotationAnimation.Clockwise
    }
}
