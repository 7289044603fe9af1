pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// The found files: the toolbar, then either the empty state or the table under its header.
Item {
    id: root

    function focusSearchField() {
        toolbar.focusSearchField()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        FileListToolbar {
            id: toolbar
            Layout.fillWidth: true
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.divider
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            EmptyStateView {
                id: emptyState
                objectName: "emptyState"
                anchors.fill: parent
                visible: RavelinthViewModel.fileList.count === 0
            }

            Rectangle {
                anchors.fill: parent
                visible: !emptyState.visible
                color: Theme.textBackground

                FileListHeader {
                    id: header
                    objectName: "fileListHeader"
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.top: parent.top
                    table: table
                }
                FileTable {
                    id: table
                    objectName: "fileTableView"
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.top: header.bottom
                    anchors.bottom: parent.bottom
                }
            }
        }
    }
}
