pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The scan control panel: the folder to scan with its browse button, the minimum size and the
// hidden-files switch, the start/stop button, the preset folders, and the progress of a
// running scan.
Rectangle {
    id: root
    readonly property bool isHoveringBrowse: browseButton.hovered
    readonly property bool isScanning: RavelinthViewModel.scan.state.phase === ScanPhase.Scanning
    readonly property var thresholdChoices: [
        { title: "10 MB", value: 10 }, { title: "25 MB", value: 25 }, { title: "50 MB", value: 50 },
        { title: "100 MB", value: 100 }, { title: "250 MB", value: 250 },
        { title: "500 MB", value: 500 }, { title: "1 GB", value: 1024 }
    ]

    implicitHeight: column.implicitHeight + 32
    radius: 12
    color: Theme.material

    // The number as the field shows it: grouped digits, decimals only when there are some.
    function formatMegabytes(value) {
        const decimals = Number.isInteger(value) ? 0 : 2
        let text = Number(value).toLocaleString(Qt.locale(), "f", decimals)
        if (decimals > 0)
            text = text.replace(new RegExp("\\" + Qt.locale().decimalPoint + "?0+$"), "")
        return text
    }

    function focusPathField() {
        pathField.forceActiveFocus()
        pathField.selectAll()
    }

    function commitMinSize() {
        let value = NaN
        try {
            value = Number.fromLocaleString(Qt.locale(), minSizeField.text)
        } catch (e) {
            value = Number(minSizeField.text)
        }
        if (isFinite(value) && value >= 0)
            RavelinthViewModel.scan.minFileSizeMB = value
    }

    Connections {
        target: RavelinthViewModel.scan
        function onMinFileSizeMBChanged() {
            if (!minSizeField.activeFocus)
                minSizeField.text = root.formatMegabytes(RavelinthViewModel.scan.minFileSizeMB)
        }
    }

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 16
        spacing: 16

        // The folder to scan.
        RowLayout {
            spacing: 12
            DiagonalGradientRectangle {
                implicitWidth: 32
                implicitHeight: 32
                radius: 8
                SymbolIcon {
                    anchors.centerIn: parent
                    symbol: "folder.fill"
                    size: 18
                    color: "white"
                }
            }
            TextField {
                id: pathField
                objectName: "pathField"
                Layout.fillWidth: true
                focus: true
                placeholderText: "Enter path to scan..."
                text: RavelinthViewModel.scan.path
                // Any change, typed or set by an assistive tool, is the folder to scan.
                onTextChanged: if (text !== RavelinthViewModel.scan.path) RavelinthViewModel.scan.path = text
                onAccepted: if (!root.isScanning) RavelinthViewModel.scan.start()
                font.pixelSize: 14
                padding: 10
                selectByMouse: true
                color: Theme.primaryText
                placeholderTextColor: Theme.tertiaryText
                background: Rectangle {
                    radius: 8
                    color: Theme.textBackground
                    border.width: pathField.activeFocus ? 2 : 1
                    border.color: pathField.activeFocus ? Theme.withOpacity(Theme.accent, 0.6)
                                                        : Theme.withOpacity(Theme.gray, 0.3)
                }
                Accessible.name: "Path to scan"
            }
            AbstractButton {
                id: browseButton
                // A screen reader's Press is the click; a bare button does not answer it.
                Accessible.onPressAction: browseButton.clicked()
                objectName: "browseButton"
                text: "Browse"
                hoverEnabled: true
                focusPolicy: Qt.TabFocus
                leftPadding: 12
                rightPadding: 12
                topPadding: 8
                bottomPadding: 8
                onClicked: RavelinthViewModel.scan.browse()
                contentItem: Row {
                    spacing: 6
                    SymbolIcon {
                        symbol: "folder.badge.plus"
                        size: 15
                        color: "white"
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        text: "Browse"
                        font.pixelSize: 13
                        font.weight: Font.Medium
                        color: "white"
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
                background: Item {
                    DiagonalGradientRectangle {
                        anchors.fill: parent
                        radius: 8
                        opacity: browseButton.hovered ? 1.0 : 0.8
                    }
                    Rectangle {
                        anchors.fill: parent
                        anchors.margins: -2
                        radius: 10
                        color: "transparent"
                        border.width: 2
                        border.color: Theme.withOpacity(Theme.accent, 0.5)
                        visible: browseButton.visualFocus
                    }
                }
            }
        }

        // What counts as large, hidden files, and the start/stop button.
        RowLayout {
            spacing: 16
            RowLayout {
                spacing: 8
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    text: "Min Size"
                    font.pixelSize: 13
                    color: Theme.secondaryText
                }
                TextField {
                    id: minSizeField
                    objectName: "minSizeField"
                    implicitWidth: 66 // 50 for the digits, 8 on each side
                    leftPadding: 8
                    rightPadding: 8
                    topPadding: 4
                    bottomPadding: 4
                    font.pixelSize: 13
                    font.weight: Font.Medium
                    horizontalAlignment: TextInput.AlignRight
                    inputMethodHints: Qt.ImhFormattedNumbersOnly
                    selectByMouse: true
                    color: Theme.primaryText
                    text: root.formatMegabytes(RavelinthViewModel.scan.minFileSizeMB)
                    onTextEdited: root.commitMinSize()
                    onEditingFinished: text = root.formatMegabytes(RavelinthViewModel.scan.minFileSizeMB)
                    background: Rectangle {
                        radius: 4
                        color: Theme.textBackground
                        border.width: minSizeField.activeFocus ? 2 : 1
                        border.color: minSizeField.activeFocus
                                      ? Theme.withOpacity(Theme.accent, 0.6)
                                      : Theme.withOpacity(Theme.gray, 0.3)
                    }
                    Accessible.name: "Minimum size in megabytes"
                }
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    text: "MB"
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
                AbstractButton {
                    id: thresholdButton
                    // A screen reader's Press is the click; a bare button does not answer it.
                    Accessible.onPressAction: thresholdButton.clicked()
                    objectName: "thresholdButton"
                    implicitWidth: 28
                    implicitHeight: 24
                    hoverEnabled: true
                    focusPolicy: Qt.TabFocus
                    onClicked: thresholdMenu.popup(thresholdButton, 0, thresholdButton.height)
                    Accessible.name: "Minimum size choices"
                    contentItem: SymbolIcon {
                        symbol: "chevron.down"
                        size: 16
                        color: Theme.secondaryText
                    }
                    background: Rectangle {
                        radius: 4
                        color: thresholdButton.hovered || thresholdMenu.visible
                               ? Theme.withOpacity(Theme.gray, 0.15) : "transparent"
                        border.width: thresholdButton.visualFocus ? 2 : 0
                        border.color: Theme.withOpacity(Theme.accent, 0.5)
                    }
                    Menu {
                        id: thresholdMenu
                        objectName: "thresholdMenu"
                        Repeater {
                            model: root.thresholdChoices
                            MenuItem {
                                id: choice
                                required property var modelData
                                text: modelData.title
                                checkable: true
                                checked: RavelinthViewModel.scan.minFileSizeMB === choice.modelData.value
                                onTriggered: {
                                    RavelinthViewModel.scan.minFileSizeMB = choice.modelData.value
                                    minSizeField.text = root.formatMegabytes(choice.modelData.value)
                                }
                            }
                        }
                    }
                }
            }
            Rectangle {
                implicitWidth: 1
                implicitHeight: 20
                color: Theme.divider
            }
            CheckBox {
                id: hiddenFilesBox
                objectName: "hiddenFilesBox"
                text: "Hidden Files"
                checked: RavelinthViewModel.scan.includeHiddenFiles
                onToggled: RavelinthViewModel.scan.includeHiddenFiles = checked
                font.pixelSize: 13
                focusPolicy: Qt.TabFocus
                FocusRing {
                    shown: hiddenFilesBox.visualFocus
                    radius: 4
                }
                contentItem: Row {
                    leftPadding: hiddenFilesBox.indicator.width + hiddenFilesBox.spacing
                    spacing: 4
                    SymbolIcon {
                        symbol: "eye.slash"
                        size: 14
                        color: Theme.primaryText
                        anchors.verticalCenter: parent.verticalCenter
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        text: hiddenFilesBox.text
                        font: hiddenFilesBox.font
                        color: Theme.primaryText
                        anchors.verticalCenter: parent.verticalCenter
                    }
                }
            }
            Item {
                Layout.fillWidth: true
            }
            ActionButton {
                id: scanButton
                objectName: "scanButton"
                title: root.isScanning ? "Stop Scan" : "Start Scan"
                icon: root.isScanning ? "stop.fill" : "play.fill"
                style: root.isScanning ? "destructive" : "primary"
                isLoading: false
                action: function () {
                    if (root.isScanning)
                        RavelinthViewModel.scan.stop()
                    else
                        RavelinthViewModel.scan.start()
                }
            }
        }

        // One button per preset folder.
        ScrollView {
            id: quickScanRow
            objectName: "quickScanRow"
            Layout.fillWidth: true
            implicitHeight: quickScanButtons.implicitHeight
            contentWidth: quickScanButtons.implicitWidth
            ScrollBar.horizontal.policy: ScrollBar.AsNeeded
            ScrollBar.vertical.policy: ScrollBar.AlwaysOff
            Row {
                id: quickScanButtons
                spacing: 8
                Repeater {
                    model: AppContext.quickAccessLocations
                    QuickScanButton {
                        id: quickScanButton
                        required property var modelData
                        objectName: "quickScan_" + modelData.name
                        location: modelData
                        action: function () {
                            RavelinthViewModel.scan.path = quickScanButton.modelData.path
                            RavelinthViewModel.scan.start()
                        }
                    }
                }
            }
        }

        ScanProgressView {
            id: progressView
            objectName: "scanProgress"
            Layout.fillWidth: true
            visible: root.isScanning
            statusMessage: RavelinthViewModel.scan.state.statusMessage
            currentFile: RavelinthViewModel.scan.state.currentFile
            filesScanned: RavelinthViewModel.scan.state.filesScanned
            bytesScanned: RavelinthViewModel.scan.state.bytesScanned
        }
        ScanGapsLine {
            objectName: "scanGaps"
            Layout.fillWidth: true
        }
    }
}
