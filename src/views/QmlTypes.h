#pragma once

#include "models/DiskInfo.h"
#include "models/ScanCategory.h"
#include "models/ScanPhase.h"
#include "models/ScanState.h"
#include "models/SortOption.h"
#include "services/FinderService.h"
#include "viewmodels/CategoryStatsModel.h"
#include "viewmodels/DiskInfoController.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/MoveUndo.h"
#include "viewmodels/NotificationCenter.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"
#include "viewmodels/ScanController.h"
#include "viewmodels/ScanGaps.h"
#include "viewmodels/SelectionController.h"

#include <QObject>
#include <QtQml/qqml.h>

#include <functional>

// The core's types as QML knows them. The core stays free of QML, so each is declared here on
// its behalf; the module's generated registration picks these declarations up.
namespace ravelinth::views {

// The process's one root. The program (or the test runner) makes it and says where to find it
// before the first view reads it; QML never owns it.
struct RavelinthViewModelForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::RavelinthViewModel)
    QML_NAMED_ELEMENT(RavelinthViewModel)
    QML_SINGLETON

public:
    using Provider = std::function<RavelinthViewModel *()>;
    // Asked once per engine, when QML first reads the singleton.
    static void setProvider(Provider provider);
    static RavelinthViewModel *create(QQmlEngine *engine, QJSEngine *scriptEngine);
};

// The root's parts: reached through it, never made by QML.
struct ScanControllerForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::ScanController)
    QML_NAMED_ELEMENT(ScanController)
    QML_UNCREATABLE("Reached through RavelinthViewModel.scan")
};

struct DiskInfoControllerForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::DiskInfoController)
    QML_NAMED_ELEMENT(DiskInfoController)
    QML_UNCREATABLE("Reached through RavelinthViewModel.disk")
};

struct FileListModelForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::FileListModel)
    QML_NAMED_ELEMENT(FileListModel)
    QML_UNCREATABLE("Reached through RavelinthViewModel.fileList")
};

struct SelectionControllerForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::SelectionController)
    QML_NAMED_ELEMENT(SelectionController)
    QML_UNCREATABLE("Reached through RavelinthViewModel.selection")
};

struct FileOperationsForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::FileOperations)
    QML_NAMED_ELEMENT(FileOperations)
    QML_UNCREATABLE("Reached through RavelinthViewModel.operations")
};

struct MoveUndoForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::MoveUndo)
    QML_NAMED_ELEMENT(MoveUndo)
    QML_UNCREATABLE("Reached through RavelinthViewModel.undo")
};
struct ScanGapsForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::ScanGaps)
    QML_NAMED_ELEMENT(ScanGaps)
    QML_UNCREATABLE("Reached through RavelinthViewModel.gaps")
};

struct CategoryStatsModelForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::CategoryStatsModel)
    QML_NAMED_ELEMENT(CategoryStatsModel)
    QML_UNCREATABLE("Reached through RavelinthViewModel.categoryStats")
};

// One store of preferences per process: a second object would not see the first one's writes.
struct PreferencesForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::Preferences)
    QML_NAMED_ELEMENT(Preferences)
    QML_UNCREATABLE("Reached through RavelinthViewModel.preferences")
};

struct NotificationCenterForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::NotificationCenter)
    QML_NAMED_ELEMENT(NotificationCenter)
    QML_UNCREATABLE("Reached through AppContext.notifications")
};

struct FinderServiceForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::FinderService)
    QML_NAMED_ELEMENT(FinderService)
    QML_UNCREATABLE("Reached through AppContext.finder")
};

// Read-only records handed over by value.
struct ScanStateForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::ScanState)
    QML_VALUE_TYPE(scanState)
    QML_UNCREATABLE("Read from RavelinthViewModel.scan.state")
};

struct DiskInfoForeign {
    Q_GADGET
    QML_FOREIGN(ravelinth::DiskInfo)
    QML_VALUE_TYPE(diskInfo)
    QML_UNCREATABLE("Read from RavelinthViewModel.disk.info")
};

} // namespace ravelinth::views

// Enumerations: QML compares against their names (ScanPhase.Scanning) and never spells a value.
// A type whose name starts with a capital must be an object type, so each enumeration's holder
// is declared as a namespace.
namespace ravelinth::views::ScanPhaseForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(ravelinth::ScanPhase)
QML_NAMED_ELEMENT(ScanPhase)
} // namespace ravelinth::views::ScanPhaseForeign

namespace ravelinth::views::SortOptionForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(ravelinth::SortOption)
QML_NAMED_ELEMENT(SortOption)
} // namespace ravelinth::views::SortOptionForeign

namespace ravelinth::views::ScanCategoryForeign {
Q_NAMESPACE
QML_FOREIGN_NAMESPACE(ravelinth::ScanCategory)
QML_NAMED_ELEMENT(ScanCategory)
} // namespace ravelinth::views::ScanCategoryForeign
