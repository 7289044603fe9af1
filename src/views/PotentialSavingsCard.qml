pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// How much space the files marked safe to delete would give back.
AccentGlassCard {
    id: root
    Accessible.role: Accessible.Grouping
    Accessible.name: "Potential Savings"
    property real savings: RavelinthViewModel.fileList.potentialSavings
    property int fileCount: RavelinthViewModel.fileList.potentialSavingsFileCount
    readonly property string detailText: TextFormat.byteCount(savings, TextFormat.binaryUnits) + " in " + fileCount
                                         + " files marked safe to delete"

    RowLayout {
        anchors.fill: parent
        spacing: 16
        GradientText {
            text: Icons.glyph("sparkles")
            fontFamily: Icons.fontFamily
            pixelSize: 32
        }
        Column {
            spacing: 4
            Layout.alignment: Qt.AlignVCenter
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                text: "Potential Savings"
                font.pixelSize: Theme.headlineSize
                font.bold: true
                color: Theme.primaryText
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                objectName: "detail"
                text: root.detailText
                font.pixelSize: Theme.subheadlineSize
                color: Theme.secondaryText
            }
        }
        Item {
            Layout.fillWidth: true
        }
        GradientText {
            text: TextFormat.byteCount(root.savings, TextFormat.binaryUnits)
            pixelSize: 24
            bold: true
        }
    }
}
