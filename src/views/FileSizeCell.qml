pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The file's size as the program writes byte counts, in a monospaced face.
Text {
    property string sizeText
    text: sizeText
    elide: Text.ElideRight
    font.family: Theme.monospaceFamily
    font.pixelSize: 12
    font.weight: Font.Medium
    color: Theme.primaryText
}
