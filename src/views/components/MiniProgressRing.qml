pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// A small ring for tight places: a faint track and the filled part from twelve o'clock.
Canvas {
    id: root
    property real progress: 0 // percent
    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.round(progress) + "% used"
    property color color: Theme.accent
    property real size: 24

    implicitWidth: size
    implicitHeight: size

    onProgressChanged: requestPaint()
    onColorChanged: requestPaint()

    onPaint: {
        const ctx = getContext("2d")
        ctx.reset()
        const c = width / 2
        const r = c - 1.5 - 1
        ctx.lineWidth = 3
        ctx.strokeStyle = Theme.withOpacity(root.color, 0.2)
        ctx.beginPath()
        ctx.arc(c, c, r, 0, 2 * Math.PI)
        ctx.stroke()
        const fraction = Math.max(0, Math.min(1, root.progress / 100))
        if (fraction <= 0)
            return
        ctx.lineCap = "round"
        ctx.strokeStyle = root.color
        ctx.beginPath()
        ctx.arc(c, c, r, -Math.PI / 2, -Math.PI / 2 + fraction * 2 * Math.PI, false)
        ctx.stroke()
    }
}
