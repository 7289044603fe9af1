import QtQuick
import QtQuick.Controls

ApplicationWindow {
    id: window
    width: 1200
    height: 800
    minimumWidth: 1200
    minimumHeight: 800
    visible: true
    title: "Ravelinth"
}
