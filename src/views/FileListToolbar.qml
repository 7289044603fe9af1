pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// Above the file list: the search box, the count and total, the sort picker and "Clear Filters".
Item {
    id: root
    implicitHeight: row.implicitHeight + 16

    function focusSearchField() {
        searchField.forceActiveFocus()
        searchField.selectAll()
    }

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.margins: 8
        spacing: 8

        Rectangle {
            id: searchBox
            Layout.fillWidth: true
            Layout.maximumWidth: 300
            Layout.preferredHeight: searchRow.implicitHeight + 16
            radius: 8
            color: Theme.textBackground
            border.width: searchField.activeFocus ? 2 : 0
            border.color: Theme.withOpacity(Theme.accent, 0.5)

            RowLayout {
                id: searchRow
                anchors.fill: parent
                anchors.margins: 8
                spacing: 6
                SymbolIcon {
                    symbol: "magnifyingglass"
                    size: 14
                    color: Theme.secondaryText
                }
                TextField {
                    id: searchField
                    objectName: "searchField"
                    Layout.fillWidth: true
                    placeholderText: "Search files..."
                    placeholderTextColor: Theme.tertiaryText
                    text: RavelinthViewModel.fileList.searchText
                    onTextEdited: RavelinthViewModel.fileList.searchText = text
                    Accessible.name: "Search files"
                    font.pixelSize: 13
                    color: Theme.primaryText
                    background: null
                    padding: 0
                    selectByMouse: true
                }
                SymbolIcon {
                    objectName: "clearSearch"
                    visible: searchField.text !== ""
                    symbol: "xmark.circle.fill"
                    size: 14
                    color: Theme.secondaryText
                    TapHandler {
                        onTapped: RavelinthViewModel.fileList.searchText = ""
                    }
                }
            }
        }

        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "countText"
            text: RavelinthViewModel.fileList.count + " files • "
                  + TextFormat.byteCount(RavelinthViewModel.fileList.totalScannedSize, TextFormat.binaryUnits)
            font.pixelSize: 12
            color: Theme.secondaryText
        }

        Rectangle {
            Layout.preferredWidth: 1
            Layout.preferredHeight: 20
            color: Theme.divider
        }

        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            text: "Sort by"
            font.pixelSize: 12
            color: Theme.secondaryText
        }
        ComboBox {
            id: sortPicker
            objectName: "sortPicker"
            Layout.preferredWidth: 160
            model: RavelinthViewModel.fileList.sortOptionNames
            currentIndex: RavelinthViewModel.fileList.sortOption
            onActivated: index => RavelinthViewModel.fileList.sortOption = index
            font.pixelSize: 12
            Accessible.name: "Sort by"
            // Plain text rather than the style's read-only field, which a screen reader would
            // meet as a second, unnamed text box inside the picker.
            contentItem: Text {
                leftPadding: 8
                rightPadding: sortPicker.indicator ? sortPicker.indicator.width : 0
                text: sortPicker.displayText
                font: sortPicker.font
                color: Theme.primaryText
                verticalAlignment: Text.AlignVCenter
                elide: Text.ElideRight
                Accessible.ignored: true
            }
            background: Rectangle {
                implicitHeight: 24
                radius: 6
                color: sortPicker.pressed ? Theme.withOpacity(Theme.gray, 0.2) : Theme.textBackground
                border.width: sortPicker.visualFocus ? 2 : 1
                border.color: sortPicker.visualFocus ? Theme.withOpacity(Theme.accent, 0.5)
                                                     : Theme.withOpacity(Theme.gray, 0.35)
            }
            delegate: ItemDelegate {
                id: optionDelegate
                required property int index
                required property string modelData
                width: sortPicker.width
                highlighted: sortPicker.highlightedIndex === optionDelegate.index
                text: modelData
                Accessible.name: modelData
                Accessible.checkable: true
                Accessible.checked: sortPicker.currentIndex === optionDelegate.index
                contentItem: Row {
                    spacing: 6
                    SymbolIcon {
                        symbol: Icons.sortOptionSymbol(optionDelegate.index)
                        size: 14
                        color: Theme.secondaryText
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        text: optionDelegate.modelData
                        font.pixelSize: 12
                        color: Theme.primaryText
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
            }
        }

        ClearFiltersButton {
            objectName: "toolbarClearFilters"
        }

        Item {
            Layout.fillWidth: true
        }
    }
}
