pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The file's category icon in the category's colour.
SymbolIcon {
    property string categoryIcon
    property color categoryColor: Theme.gray
    symbol: categoryIcon
    size: 16
    color: categoryColor
}
