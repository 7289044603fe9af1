pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import RavelinthTest

// The process has one root, shared by every test: each test puts back what it changed, so that
// the next one starts from no files, no filters, no selection and the default settings.
QtObject {
    id: root

    // `test` is the calling TestCase, whose tryVerify waits for the empty scan to finish.
    function reset(test) {
        const vm = RavelinthViewModel
        vm.errorMessage = ""
        vm.operations.cancelPendingMove()
        vm.operations.dismissTrashReport()
        vm.preferences.confirmBeforeDelete = true
        vm.showSettings = false
        vm.fileList.searchText = ""
        vm.fileList.categoryFilter = -1
        vm.fileList.sortOption = 0
        vm.selection.clear()
        vm.scan.minFileSizeMB = 100
        vm.scan.includeHiddenFiles = false
        // A scan of an empty folder replaces whatever an earlier scan kept; a scan still
        // running is overtaken by it and its late results are dropped.
        vm.scan.path = TestFiles.sparseTree({})
        vm.scan.start()
        test.tryVerify(() => vm.scan.state.phase === ScanPhase.Completed
                       && vm.fileList.fileCount === 0 && vm.fileList.count === 0, 20000)
        vm.scan.path = AppContext.quickAccessLocations[0].path
    }
}
