pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The settings: the stored preferences, what scans leave out, a reference of keyboard shortcuts,
// and an about page.
// Every control writes its preference the moment it changes.
Item {
    id: root
    property int currentTab: 0 // 0 General, 1 Exclusions, 2 Shortcuts, 3 About
    readonly property int tabCount: 4
    // While a list of choices is open, Escape belongs to it and not to the window.
    readonly property bool popupOpen: sizePicker.popup.visible
    readonly property var sizeChoices: [
        { label: "10 MB", value: 10.0 }, { label: "25 MB", value: 25.0 },
        { label: "50 MB", value: 50.0 }, { label: "100 MB", value: 100.0 },
        { label: "250 MB", value: 250.0 }, { label: "500 MB", value: 500.0 },
        { label: "1 GB", value: 1024.0 }
    ]
    readonly property var shortcutGroups: [
        [{ keys: "⌘ N", action: "New Scan" }, { keys: "⌘ O", action: "Browse for Folder" },
         { keys: "⌘ .", action: "Stop Scan" }],
        [{ keys: "⌘ F", action: "Search Files" }, { keys: "⌘ A", action: "Select All" },
         { keys: "⌘ ⇧ A", action: "Deselect All" }],
        [{ keys: "⌘ ⌫", action: "Move to Trash" }, { keys: "⌘ ⇧ G", action: "Reveal in Finder" },
         { keys: "Space", action: "Quick Look" }]
    ]
    readonly property Preferences preferences: RavelinthViewModel.preferences

    // The index of the stored size among the choices; -1 (no selection) for any other value.
    function sizeIndex(stored) {
        const value = Number(stored)
        for (let i = 0; i < sizeChoices.length; ++i) {
            if (sizeChoices[i].value === value)
                return i
        }
        return -1
    }

    implicitWidth: 480
    implicitHeight: 430

    // Ctrl+Tab and Ctrl+Shift+Tab go round the tabs, as in other tabbed windows. With Shift,
    // Tab arrives as Backtab.
    Shortcut {
        sequences: ["Ctrl+Tab"]
        onActivated: root.currentTab = (root.currentTab + 1) % root.tabCount
    }
    Shortcut {
        sequences: ["Ctrl+Shift+Backtab", "Ctrl+Shift+Tab"]
        onActivated: root.currentTab = (root.currentTab + root.tabCount - 1) % root.tabCount
    }

    // The tab the keys opened takes the focus with it, so the reader names where it is.
    function selectTab(index) {
        currentTab = index
        const tab = [generalTab, exclusionsTab, shortcutsTab, aboutTab][index]
        if (tab)
            tab.forceActiveFocus(Qt.TabFocusReason)
    }

    // The window opens with its first control focused: the tab that is showing.
    function focusFirstControl() {
        [generalTab, exclusionsTab, shortcutsTab, aboutTab][currentTab].forceActiveFocus(Qt.TabFocusReason)
    }

    component PaneTab: Item {
        id: tab
        property string title
        property string icon
        property int index
        readonly property bool selected: root.currentTab === index
        implicitWidth: Math.max(64, tabColumn.implicitWidth + 20)
        implicitHeight: tabColumn.implicitHeight + 10
        activeFocusOnTab: true
        Keys.onSpacePressed: root.currentTab = tab.index
        Keys.onReturnPressed: root.currentTab = tab.index
        Keys.onEnterPressed: root.currentTab = tab.index
        // The arrows go along the tabs and open the one they reach, as tab bars do.
        Keys.onLeftPressed: root.selectTab((root.currentTab + root.tabCount - 1) % root.tabCount)
        Keys.onRightPressed: root.selectTab((root.currentTab + 1) % root.tabCount)
        Rectangle {
            anchors.fill: parent
            radius: 6
            color: tab.selected ? Theme.withOpacity(Theme.gray, 0.18)
                                : tabHover.hovered ? Theme.withOpacity(Theme.gray, 0.08) : "transparent"
            border.width: tab.activeFocus ? 2 : 0
            border.color: Theme.withOpacity(Theme.accent, 0.5)
        }
        Column {
            id: tabColumn
            anchors.centerIn: parent
            spacing: 2
            SymbolIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                symbol: tab.icon
                size: 22
                color: tab.selected ? Theme.accent : Theme.secondaryText
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                anchors.horizontalCenter: parent.horizontalCenter
                text: tab.title
                font.pixelSize: 11
                color: tab.selected ? Theme.accent : Theme.primaryText
            }
        }
        HoverHandler {
            id: tabHover
        }
        TapHandler {
            onTapped: root.currentTab = tab.index
        }
        Accessible.role: Accessible.PageTab
        Accessible.name: title
        Accessible.selected: tab.selected
        Accessible.selectable: true
        Accessible.focusable: true
        Accessible.onPressAction: root.currentTab = tab.index
    }

    // A check box bound to one stored preference; a click writes it and the box keeps following
    // the store afterwards.
    component PreferenceToggle: CheckBox {
        id: toggle
        property string key
        leftPadding: 0
        FocusRing {
            shown: toggle.visualFocus
            radius: 4
        }
        checked: root.preferences[key]
        onToggled: {
            root.preferences[key] = checked
            checked = Qt.binding(() => root.preferences[toggle.key])
        }
    }

    component SectionTitle: Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        font.pixelSize: Theme.subheadlineSize
        font.weight: Font.DemiBold
        color: Theme.secondaryText
        Layout.topMargin: 6
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Row {
            Layout.alignment: Qt.AlignHCenter
            Layout.topMargin: 6
            Layout.bottomMargin: 6
            spacing: 4
            PaneTab {
                id: generalTab
                objectName: "generalTab"
                title: "General"
                icon: "gearshape"
                index: 0
            }
            PaneTab {
                id: exclusionsTab
                objectName: "exclusionsTab"
                title: "Exclusions"
                icon: "eye.slash"
                index: 1
            }
            PaneTab {
                id: shortcutsTab
                objectName: "shortcutsTab"
                title: "Shortcuts"
                icon: "keyboard"
                index: 2
            }
            PaneTab {
                id: aboutTab
                objectName: "aboutTab"
                title: "About"
                icon: "info.circle"
                index: 3
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.divider
        }

        StackLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            currentIndex: root.currentTab

            // General
            Item {
                ColumnLayout {
                    anchors.fill: parent
                    anchors.margins: 20
                    anchors.topMargin: 12
                    spacing: 4

                    SectionTitle {
                        text: "Scanning"
                        Layout.topMargin: 0
                    }
                    RowLayout {
                        spacing: 8
                        Label {
                            text: "Default minimum file size:"
                            font.pixelSize: Theme.bodySize
                        }
                        ComboBox {
                            id: sizePicker
                            objectName: "sizePicker"
                            implicitWidth: 110
                            model: root.sizeChoices.map(choice => choice.label)
                            currentIndex: root.sizeIndex(root.preferences.defaultMinSizeMB)
                            displayText: currentIndex >= 0 ? currentText : ""
                            Accessible.name: "Default minimum file size"
                            FocusRing {
                                shown: sizePicker.visualFocus
                                radius: 4
                            }
                            onActivated: index => {
                                root.preferences.defaultMinSizeMB = root.sizeChoices[index].value
                                currentIndex = Qt.binding(() => root.sizeIndex(root.preferences.defaultMinSizeMB))
                            }
                        }
                    }
                    PreferenceToggle {
                        id: hiddenFilesToggle
                        objectName: "hiddenFilesToggle"
                        text: "Include hidden files"
                        key: "includeHiddenFiles"
                    }
                    PreferenceToggle {
                        id: systemDirectoriesToggle
                        objectName: "systemDirectoriesToggle"
                        text: "Skip system directories"
                        key: "skipSystemDirectories"
                    }
                    PreferenceToggle {
                        objectName: "oneFileSystemToggle"
                        text: "Stay on the scanned folder's file system"
                        key: "stayOnOneFileSystem"
                    }
                    PreferenceToggle {
                        objectName: "networkDrivesToggle"
                        text: "Scan network drives"
                        key: "scanNetworkDrives"
                    }
                    SectionTitle {
                        text: "Display"
                    }
                    PreferenceToggle {
                        id: binarySizesToggle
                        objectName: "binarySizesToggle"
                        text: "Show sizes in binary (1024-based)"
                        key: "showSizesInBinary"
                    }
                    SectionTitle {
                        text: "Safety"
                    }
                    PreferenceToggle {
                        id: confirmDeleteToggle
                        objectName: "confirmDeleteToggle"
                        text: "Confirm before moving to trash"
                        key: "confirmBeforeDelete"
                    }
                    Item {
                        Layout.fillHeight: true
                    }
                }
            }

            ExclusionsPane {
                objectName: "exclusionsPane"
            }

            // Shortcuts
            Item {
                ColumnLayout {
                    anchors.fill: parent
                    anchors.margins: 20
                    anchors.topMargin: 10
                    spacing: 4
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        text: "Keyboard Shortcuts"
                        font.pixelSize: Theme.headlineSize
                        font.bold: true
                        color: Theme.primaryText
                        Layout.bottomMargin: 2
                    }
                    Repeater {
                        model: root.shortcutGroups
                        ColumnLayout {
                            id: shortcutGroup
                            required property var modelData
                            required property int index
                            Layout.fillWidth: true
                            spacing: 3
                            Rectangle {
                                visible: shortcutGroup.index > 0
                                Layout.fillWidth: true
                                Layout.preferredHeight: 1
                                Layout.topMargin: 2
                                Layout.bottomMargin: 2
                                color: Theme.divider
                            }
                            Repeater {
                                model: shortcutGroup.modelData
                                ShortcutRow {
                                    required property var modelData
                                    Layout.fillWidth: true
                                    keys: AppContext.shortcutWords(modelData.keys)
                                    action: AppContext.words(modelData.action)
                                }
                            }
                        }
                    }
                    Item {
                        Layout.fillHeight: true
                    }
                }
            }

            // About
            Item {
                Column {
                    anchors.centerIn: parent
                    width: 300
                    spacing: 8
                    GradientTile {
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: 80
                        height: 80
                        cornerRadius: 20
                        SymbolIcon {
                            anchors.centerIn: parent
                            symbol: "internaldrive"
                            size: 36
                            color: "white"
                        }
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        anchors.horizontalCenter: parent.horizontalCenter
                        topPadding: 4
                        text: "Ravelinth"
                        font.pixelSize: Theme.titleSize
                        font.bold: true
                        color: Theme.primaryText
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "Version 1.0"
                        font.pixelSize: Theme.captionSize
                        color: Theme.secondaryText
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        width: parent.width
                        text: AppContext.words("A powerful disk space analyzer for macOS. Find and clean up large files, installers, and archives to free up storage space.")
                        horizontalAlignment: Text.AlignHCenter
                        wrapMode: Text.WordWrap
                        font.pixelSize: Theme.bodySize
                        color: Theme.secondaryText
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "Built with Qt Quick and the Material Icons font"
                        font.pixelSize: Theme.captionSize
                        color: Theme.secondaryText
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        anchors.horizontalCenter: parent.horizontalCenter
                        text: "© 2026 Ravelinth"
                        font.pixelSize: Theme.captionSize
                        color: Theme.secondaryText
                    }
                }
            }
        }
    }
}
