import QtQuick
import Ravelinth
import QtQuick.Controls

// Placeholder until the view is built.
Item {
    id: root
    property var diskInfo: null
    implicitWidth: 80
    implicitHeight: 32
}
