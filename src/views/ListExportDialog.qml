pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Dialogs

// Where File > Export List... saves the rows as displayed. The chosen filter picks the form for
// a name typed without an extension; the view model adds the extension then.
FileDialog {
    id: root
    title: "Export List"
    fileMode: FileDialog.SaveFile
    nameFilters: ["CSV (*.csv)", "JSON (*.json)"]
    onAccepted: RavelinthViewModel.operations.exportList(selectedFile, selectedNameFilter.index)
}
