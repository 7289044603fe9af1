pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// What scans leave out: folders, chosen or typed, and name patterns. Each list has its own field
// and "Add" button, and every row its own remove button; a change applies from the next scan.
Item {
    id: root
    readonly property Preferences preferences: RavelinthViewModel.preferences
    readonly property Item firstControl: folderRow.field

    component SectionTitle: Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        font.pixelSize: Theme.subheadlineSize
        font.weight: Font.DemiBold
        color: Theme.secondaryText
    }

    // One list with a remove button per row and a placeholder when empty.
    component ExclusionList: Rectangle {
        id: list
        property var entries: []
        property string what
        property string emptyText
        signal removeRequested(int index)
        Layout.fillWidth: true
        Layout.fillHeight: true
        Layout.minimumHeight: 56
        radius: 6
        color: Theme.textBackground
        border.color: Theme.divider
        Text {
            anchors.centerIn: parent
            visible: list.entries.length === 0
            text: list.emptyText
            font.pixelSize: Theme.captionSize
            color: Theme.secondaryText
        }
        ListView {
            id: rows
            anchors.fill: parent
            anchors.margins: 4
            clip: true
            model: list.entries
            Accessible.role: Accessible.List
            Accessible.name: list.what
            ScrollBar.vertical: ScrollBar {}
            delegate: RowLayout {
                id: row
                required property string modelData
                required property int index
                width: rows.width
                spacing: 4
                Text {
                    Layout.fillWidth: true
                    leftPadding: 4
                    text: row.modelData
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.bodySize
                    color: Theme.primaryText
                    Accessible.role: Accessible.ListItem
                    Accessible.name: text
                }
                ToolButton {
                    id: removeButton
                    objectName: "remove_" + row.modelData
                    implicitWidth: 24
                    implicitHeight: 22
                    focusPolicy: Qt.StrongFocus
                    Accessible.name: "Remove " + row.modelData
                    ToolTip.visible: hovered
                    ToolTip.text: "Remove"
                    contentItem: SymbolIcon {
                        symbol: "xmark.circle.fill"
                        size: 14
                        color: removeButton.hovered ? Theme.red : Theme.secondaryText
                    }
                    FocusRing {
                        shown: removeButton.visualFocus
                        radius: 4
                    }
                    onClicked: list.removeRequested(row.index)
                }
            }
        }
    }

    // A field whose text goes in with Return or its "Add" button, then clears.
    component AddRow: RowLayout {
        id: addRow
        property alias field: input
        property string placeholder
        property string what
        property string problem
        signal submitted(string text)
        spacing: 6
        Layout.fillWidth: true
        TextField {
            id: input
            Layout.fillWidth: true
            placeholderText: addRow.placeholder
            font.pixelSize: Theme.bodySize
            Accessible.name: addRow.what
            Accessible.description: addRow.problem
            onAccepted: addRow.submitted(text)
            onTextChanged: addRow.problem = ""
        }
        Button {
            text: "Add"
            enabled: input.text.trim() !== ""
            Accessible.name: "Add " + addRow.what.toLowerCase()
            onClicked: addRow.submitted(input.text)
        }
    }

    function addTyped(row, text, mustBeFolder) {
        const trimmed = text.trim()
        const isFolder = trimmed.startsWith("/") || trimmed === "~" || trimmed.startsWith("~/")
        if (mustBeFolder && !isFolder) {
            row.problem = "Type a full path, starting with / or ~"
            return
        }
        if (!mustBeFolder && isFolder) {
            row.problem = "A path goes in the folder list above"
            return
        }
        if (preferences.addExclusion(trimmed))
            row.field.text = ""
        else
            row.problem = "Already in the list"
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: 20
        anchors.topMargin: 12
        spacing: 6

        SectionTitle {
            text: "Excluded Folders"
        }
        ExclusionList {
            objectName: "excludedFolderList"
            what: "Excluded folders"
            emptyText: "No folders are excluded"
            entries: root.preferences.excludedFolders
            onRemoveRequested: index => root.preferences.removeExcludedFolder(index)
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: 6
            AddRow {
                id: folderRow
                objectName: "folderRow"
                placeholder: "/path/to/folder"
                what: "Folder to exclude"
                onSubmitted: text => root.addTyped(folderRow, text, true)
            }
            Button {
                objectName: "chooseFolderButton"
                text: "Choose…"
                Accessible.name: "Choose a folder to exclude"
                onClicked: root.preferences.chooseExcludedFolder()
            }
        }
        Text {
            visible: folderRow.problem !== ""
            text: folderRow.problem
            font.pixelSize: Theme.captionSize
            color: Theme.readable(Theme.red, Theme.windowBackground, 4.5)
        }

        SectionTitle {
            text: "Excluded Names"
            Layout.topMargin: 6
        }
        ExclusionList {
            objectName: "excludedPatternList"
            what: "Excluded names"
            emptyText: "No names are excluded"
            entries: root.preferences.excludedPatterns
            onRemoveRequested: index => root.preferences.removeExcludedPattern(index)
        }
        AddRow {
            id: patternRow
            objectName: "patternRow"
            placeholder: "node_modules, *.vmdk, .git"
            what: "Name pattern to exclude"
            onSubmitted: text => root.addTyped(patternRow, text, false)
        }
        Text {
            visible: patternRow.problem !== ""
            text: patternRow.problem
            font.pixelSize: Theme.captionSize
            color: Theme.readable(Theme.red, Theme.windowBackground, 4.5)
        }
        Text {
            Layout.fillWidth: true
            text: "A pattern with a / is matched against the path below the scanned folder."
            wrapMode: Text.WordWrap
            font.pixelSize: Theme.captionSize
            color: Theme.secondaryText
        }
    }
}
