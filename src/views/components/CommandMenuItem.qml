pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// A menu entry that shows its keyboard shortcut on the right, as desktop menus do. The text is
// the action's `shortcut`, or its `shortcutHint` when the keys are handled elsewhere (the text
// field's own cut, copy and paste).
MenuItem {
    id: root
    readonly property string shortcutText: {
        if (!action)
            return ""
        if (action.shortcutHint !== undefined && action.shortcutHint !== "")
            return action.shortcutHint
        return action.shortcut ? String(action.shortcut) : ""
    }
    Accessible.name: text.replace("&", "")
    Accessible.description: shortcutText
    implicitWidth: Math.max(220, implicitContentWidth + leftPadding + rightPadding)

    contentItem: RowLayout {
        spacing: 24
        opacity: root.enabled ? 1 : 0.4
        Text {
            text: root.text
            font: root.font
            color: root.highlighted ? root.palette.highlightedText : root.palette.text
            Layout.fillWidth: true
            Layout.rightMargin: root.subMenu ? 16 : 0
        }
        Text {
            visible: root.shortcutText !== ""
            text: root.shortcutText
            font: root.font
            color: root.highlighted ? root.palette.highlightedText : Theme.secondaryText
        }
    }
}
