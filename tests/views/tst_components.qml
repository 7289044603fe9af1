import QtQuick
import QtTest
import Ravelinth

TestCase {
    id: testCase
    name: "Components"
    when: windowShown
    visible: true
    width: 700
    height: 400

    Component {
        id: gallery
        Rectangle {
            width: 700
            height: 400
            color: Theme.windowBackground
            property alias ring: ring
            property alias primary: primary
            Row {
                x: 20
                y: 20
                spacing: 24
                GlassCard {
                    width: 200
                    height: 120
                    Text { text: "Glass" }
                }
                AccentGlassCard {
                    width: 200
                    height: 120
                    Text { text: "Accent" }
                }
                AnimatedProgressRing {
                    id: ring
                    progress: 72
                    size: 120
                    lineWidth: 12
                }
            }
            Row {
                x: 20
                y: 200
                spacing: 12
                ActionButton { id: primary; title: "Start Scan"; icon: "play.fill"; style: "primary" }
                ActionButton { title: "Stop Scan"; icon: "stop.fill"; style: "destructive" }
                ActionButton { title: "Secondary"; style: "secondary" }
                ActionButton { title: "Plain"; icon: "folder"; style: "plain" }
                MiniProgressRing { progress: 40; color: Theme.diskGreen }
            }
        }
    }

    function test_ringSettlesOnItsValueAndButtonsAct() {
        const view = createTemporaryObject(gallery, testCase)
        tryCompare(view.ring, "animatedProgress", 72, 3000)
        let clicks = 0
        view.primary.action = function () { clicks += 1 }
        mouseClick(view.primary)
        compare(clicks, 1)
        wait(300)
        const shot = grabImage(view)
        shot.save("components.png") // beside the test binary, to look at
        compare(Icons.missing, [])
    }
}
