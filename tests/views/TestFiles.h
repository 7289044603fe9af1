#pragma once

#include <QObject>
#include <QString>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

// What the view tests need from the real file system beyond TestFolder (QML singleton
// TestFiles): trees of sparse files that live until the process ends, and the settings file.
class TestFiles : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    // {"relative/path.ext": size in bytes} -> the absolute root of a new tree of sparse files.
    Q_INVOKABLE QString sparseTree(const QVariantMap &files) const;
    // The settings file as written on disk ("" when there is none).
    Q_INVOKABLE QString settingsFileText() const;
};
