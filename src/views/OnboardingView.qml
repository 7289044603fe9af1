import QtQuick
import Ravelinth
import QtQuick.Controls

// Placeholder until the view is built. Setting isPresented to false closes the sheet.
Item {
    id: root
    property bool isPresented: true
    implicitWidth: 600
    implicitHeight: 500
    Button {
        anchors.centerIn: parent
        text: "Get Started"
        onClicked: root.isPresented = false
    }
}
