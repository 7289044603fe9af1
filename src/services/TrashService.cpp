#include "services/TrashService.h"

// Placeholder so the tree links; the real service replaces it.
namespace ravelinth {

struct TrashService::Private {};
TrashService::TrashService(QObject *parent) : QObject(parent) {}
TrashService::~TrashService() = default;

} // namespace ravelinth
