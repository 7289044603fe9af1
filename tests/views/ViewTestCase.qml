import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// A test case over the process's one root: puts it back before the first test and after each
// one, and scans real folders of sparse files into it.
TestCase {
    id: testCase
    when: windowShown

    readonly property var vm: RavelinthViewModel
    readonly property real mb: 1000 * 1000
    readonly property real mib: 1024 * 1024

    RootReset {
        id: rootReset
    }
    function resetRoot() {
        rootReset.reset(testCase)
    }
    function initTestCase() {
        resetRoot()
    }
    function cleanup() {
        resetRoot()
    }
    // Every symbol the views asked for while the file's tests ran was found.
    function cleanupTestCase() {
        compare(Icons.missing, [])
    }

    readonly property Component folderComponent: Component {
        TestFolder {}
    }
    // A real folder of `files` ([{ path, size, age in seconds }]) that goes with the test.
    function makeFolder(files) {
        const folder = createTemporaryObject(folderComponent, testCase)
        for (const f of files)
            folder.file(f.path, f.size, f.age || 0)
        return folder
    }
    // Scans `path` down to 1 MB and waits until its `count` files are listed.
    function scanPath(path, count) {
        vm.scan.minFileSizeMB = 1
        vm.scan.path = path
        vm.scan.start()
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed && vm.fileList.count === count,
                  20000, "listed " + vm.fileList.count + " of " + count)
    }
}
