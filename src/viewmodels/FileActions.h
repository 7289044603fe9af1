#pragma once

#include "viewmodels/RavelinthViewModel.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

namespace ravelinth {

// What the file list's context menu and double-click do to files, named by identifier. Each
// action looks the files up in the view model and works on their exact path bytes, so a name
// that is not UTF-8 is revealed or opened as it is on disk.
class FileActions : public QObject {
    Q_OBJECT
    Q_PROPERTY(ravelinth::RavelinthViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY
                   viewModelChanged)

public:
    explicit FileActions(QObject *parent = nullptr);

    RavelinthViewModel *viewModel() const;
    void setViewModel(RavelinthViewModel *viewModel);

    // The identifiers among `fileIds` that name a file of the view model, in the files' order.
    Q_INVOKABLE QStringList existing(const QStringList &fileIds) const;
    // Shows the files, selected, in one file-manager window.
    Q_INVOKABLE void reveal(const QStringList &fileIds) const;
    // Opens each file with its default application.
    Q_INVOKABLE void open(const QStringList &fileIds) const;
    // Puts the path of the first file (and only that one) on the clipboard as plain text.
    Q_INVOKABLE void copyPath(const QStringList &fileIds) const;
    // Moves each file to the Trash on its own, so that every failure is reported.
    Q_INVOKABLE void moveToTrash(const QStringList &fileIds) const;

signals:
    void viewModelChanged();

private:
    QList<const FileItem *> lookUp(const QStringList &fileIds, bool inFilesOrder) const;

    QPointer<RavelinthViewModel> m_viewModel;
};

} // namespace ravelinth
