pragma ComponentBehavior: Bound
import QtQuick

// Counts the minutes while `running`. Texts that say how long ago something was bind to `tick`,
// so they are read again once a minute and follow the clock.
QtObject {
    id: root
    property bool running: false
    property int tick: 0

    readonly property Timer timer: Timer {
        interval: 60000
        repeat: true
        running: root.running
        onTriggered: root.tick += 1
    }
}
