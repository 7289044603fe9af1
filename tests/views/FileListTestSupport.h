#pragma once

#include "Mount.h"
#include "TestTree.h"

#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

class QQmlEngine;
class QJSEngine;

namespace ravelinth::test {

// A real folder of sparse files for the view tests to scan (QML type TestFolder).
class TestFolder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString root READ root CONSTANT)

public:
    explicit TestFolder(QObject *parent = nullptr);
    ~TestFolder() override;

    QString root() const;
    // Creates the file (and its folders) with `size` bytes, last modified `ageSeconds` ago.
    Q_INVOKABLE QString file(const QString &relative, double size, double ageSeconds = 0);
    Q_INVOKABLE bool exists(const QString &relative) const;
    // Makes the entry immutable (chattr +i, so the tests need root) until the folder goes: it
    // cannot be moved to the Trash, nor removed.
    Q_INVOKABLE bool lock(const QString &relative);
    // Bind-mounts the whole folder again at `relative` inside it (needs root), until the folder
    // goes: a scan then meets a mount of a folder it is already walking.
    Q_INVOKABLE bool mirror(const QString &relative);
    // Gives the file at `existing` another name (a hard link) at `relative`.
    Q_INVOKABLE bool link(const QString &existing, const QString &relative);

private:
    QList<QByteArray> m_locked;
    std::vector<std::unique_ptr<Mount>> m_mounts;
    TestTree m_tree;
};

// Stands in for the desktop while the view tests run (QML singleton TestDesktop): every file
// address the program asks the desktop to open is written down here instead of launching
// anything.
class DesktopRecorder : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(TestDesktop)
    QML_SINGLETON
    Q_PROPERTY(QStringList opened READ opened NOTIFY openedChanged)

public:
    // The one recorder of the process, which every engine shares: QML makes none of its own,
    // as it would for a type it can construct.
    static DesktopRecorder *instance();
    static DesktopRecorder *create(QQmlEngine *engine, QJSEngine *scriptEngine);
    QStringList opened() const { return m_opened; }
    Q_INVOKABLE void clear();

public slots:
    void open(const QUrl &url);

signals:
    void openedChanged();

private:
    DesktopRecorder() = default;
    QStringList m_opened;
};

} // namespace ravelinth::test
