import QtQuick
import QtTest
import Ravelinth

TestCase {
    name: "MainWindow"

    function test_opensAtLeastMinimumSize() {
        var window = createTemporaryObject(Qt.createComponent("qrc:/Ravelinth/Main.qml"), null)
        verify(window !== null)
        verify(window.width >= 1200)
        verify(window.height >= 800)
    }
}
