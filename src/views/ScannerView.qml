import QtQuick
import Ravelinth
import QtQuick.Controls

// Placeholder until the view is built.
Item {
    id: root
    property RavelinthViewModel viewModel
    implicitHeight: 120
    Label {
        anchors.centerIn: parent
        text: "ScannerView"
        color: Theme.secondaryText
    }
}
