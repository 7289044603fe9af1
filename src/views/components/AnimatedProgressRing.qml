pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// A ring that fills clockwise from twelve o'clock with a colour gradient, springing to each new
// value, with an optional percentage in its centre.
Item {
    id: root
    property real progress: 0 // percent, 0 to 100
    property real size: 150
    property real lineWidth: 15
    property var gradientColors: defaultColors(progress)
    property bool showPercentage: true
    property string caption: "used"
    // A progress bar to a screen reader, read as its caption says: "69% used".
    readonly property real value: progress
    readonly property real minimumValue: 0
    readonly property real maximumValue: 100
    Accessible.role: Accessible.ProgressBar
    Accessible.name: Math.round(progress) + "% " + caption

    property real animatedProgress: 0

    // Green below 70 %, yellow below 85 %, red from there, each fading to 70 % opacity.
    function defaultColors(percent) {
        const base = percent < 70 ? Theme.diskGreen : percent < 85 ? Theme.diskYellow : Theme.diskRed
        return [base, Theme.withOpacity(base, 0.7)]
    }

    implicitWidth: size
    implicitHeight: size

    Component.onCompleted: animatedProgress = progress
    onProgressChanged: animatedProgress = progress
    Behavior on animatedProgress {
        SpringAnimation {
            spring: 4
            damping: 0.5
            epsilon: 0.05
        }
    }

    onAnimatedProgressChanged: ring.requestPaint()
    onGradientColorsChanged: ring.requestPaint()
    onLineWidthChanged: ring.requestPaint()

    Canvas {
        id: ring
        anchors.centerIn: parent
        width: root.size
        height: root.size
        onWidthChanged: requestPaint()

        onPaint: {
            const ctx = getContext("2d")
            ctx.reset()
            const c = width / 2
            const r = c - root.lineWidth / 2 - 3
            const fraction = Math.max(0, Math.min(1, root.animatedProgress / 100))
            const start = -Math.PI / 2
            const end = start + fraction * 2 * Math.PI

            ctx.lineWidth = root.lineWidth
            ctx.strokeStyle = Qt.rgba(0.56, 0.56, 0.58, 0.2)
            ctx.beginPath()
            ctx.arc(c, c, r, 0, 2 * Math.PI)
            ctx.stroke()
            if (fraction <= 0)
                return

            const colors = root.gradientColors
            const first = colors.length > 0 ? colors[0] : Theme.accent
            // The conical gradient runs counter-clockwise from twelve o'clock, so its stops are
            // laid out in reverse to read clockwise along the arc.
            const gradient = ctx.createConicalGradient(c, c, Math.PI / 2)
            for (let i = 0; i < colors.length; ++i)
                gradient.addColorStop(1 - i / Math.max(1, colors.length - 1), colors[i])

            ctx.lineCap = "round"
            ctx.lineJoin = "round"

            // The glow: the same arc, wider and soft.
            ctx.save()
            ctx.globalAlpha = 0.3
            ctx.shadowColor = first
            ctx.shadowBlur = 8
            ctx.lineWidth = root.lineWidth + 4
            ctx.strokeStyle = gradient
            ctx.beginPath()
            ctx.arc(c, c, r, start, end, false)
            ctx.stroke()
            ctx.restore()

            ctx.lineWidth = root.lineWidth
            ctx.strokeStyle = gradient
            ctx.beginPath()
            ctx.arc(c, c, r, start, end, false)
            ctx.stroke()

            // The round start cap would show the gradient's last colour: paint it in the first.
            ctx.fillStyle = first
            ctx.beginPath()
            ctx.arc(c, c - r, root.lineWidth / 2, 0, 2 * Math.PI)
            ctx.fill()
        }
    }

    Column {
        anchors.centerIn: parent
        visible: root.showPercentage
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: Math.trunc(root.animatedProgress) + "%"
            font.pixelSize: root.size * 0.25
            font.bold: true
            color: Theme.primaryText
        }
        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.caption
            font.pixelSize: root.size * 0.12
            font.weight: Font.Medium
            color: Theme.secondaryText
        }
    }
}
