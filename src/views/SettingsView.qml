import QtQuick
import Ravelinth
import QtQuick.Controls

// Placeholder until the view is built.
Item {
    id: root
    implicitWidth: 450
    implicitHeight: 350
}
