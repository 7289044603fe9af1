#include "TestFiles.h"

#include "TestTree.h"

#include <QCoreApplication>
#include <QFile>
#include <QQmlEngine>
#include <QVariantMap>

#include <memory>
#include <vector>

namespace {

// What the view tests need from the real file system: a hermetic home for settings and trash,
// and folders of sparse files for real scans. Both live until the process ends.
struct Fixtures {
    ravelinth::test::ScopedTestEnvironment environment;
    std::vector<std::unique_ptr<ravelinth::test::TestTree>> trees;
};

std::unique_ptr<Fixtures> &fixtures() {
    static std::unique_ptr<Fixtures> instance;
    return instance;
}

void setUpFixtures() {
    fixtures() = std::make_unique<Fixtures>();
    // Two runs that must see one settings file (a restart) name it; every other run gets a
    // fresh one inside the temporary home.
    const QByteArray shared = qgetenv("RAVELINTH_SHARED_CONFIG_HOME");
    if (!shared.isEmpty())
        qputenv("XDG_CONFIG_HOME", shared);
    // No file manager answers: revealing falls back to opening a folder, which the test desktop
    // records (FileListTestSupport.cpp).
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/ravelinth-test-bus");
    // The program's own names, so the settings land where the program keeps them.
    QCoreApplication::setOrganizationName(u"Ravelinth"_qs);
    QCoreApplication::setApplicationName(u"Ravelinth"_qs);
    qAddPostRoutine([] { fixtures().reset(); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(setUpFixtures)

QString TestFiles::sparseTree(const QVariantMap &files) const {
    auto tree = std::make_unique<ravelinth::test::TestTree>();
    for (auto it = files.constBegin(); it != files.constEnd(); ++it)
        tree->file(it.key().toUtf8(), qint64(it.value().toDouble()));
    const QString root = QFile::decodeName(tree->root());
    fixtures()->trees.push_back(std::move(tree));
    return root;
}

QString TestFiles::settingsFileText() const {
    QFile file(QFile::decodeName(qgetenv("XDG_CONFIG_HOME")) + u"/Ravelinth/Ravelinth.conf"_qs);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}
