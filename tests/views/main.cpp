#include "QmlTypes.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

#include <memory>

Q_IMPORT_QML_PLUGIN(RavelinthPlugin)

// The one root of the test process, as in the program. It is made when a test first reads it,
// not at start-up, so the first test to look still sees the state before the first disk report.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() {
        ravelinth::views::RavelinthViewModelForeign::setProvider([this] {
            if (!m_root)
                m_root = std::make_unique<ravelinth::RavelinthViewModel>();
            return m_root.get();
        });
    }
    // Gone while the application still runs: its background work ends on the main thread.
    void cleanupTestCase() { m_root.reset(); }

private:
    std::unique_ptr<ravelinth::RavelinthViewModel> m_root;
};

QUICK_TEST_MAIN_WITH_SETUP(views, Setup)
#include "main.moc"
