#include "services/DiskInfoService.h"

// Placeholder so the tree links; the real service replaces it.
namespace ravelinth {

struct DiskInfoService::Private {};
DiskInfoService::DiskInfoService(QObject *parent) : QObject(parent) {}
DiskInfoService::~DiskInfoService() = default;

} // namespace ravelinth
