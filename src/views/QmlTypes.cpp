#include "QmlTypes.h"

#include <QQmlEngine>

namespace ravelinth::views {

namespace {

RavelinthViewModelForeign::Provider &provider() {
    static RavelinthViewModelForeign::Provider instance;
    return instance;
}

} // namespace

void RavelinthViewModelForeign::setProvider(Provider provider) {
    views::provider() = std::move(provider);
}

RavelinthViewModel *RavelinthViewModelForeign::create(QQmlEngine *, QJSEngine *) {
    if (!provider())
        qFatal("RavelinthViewModel: no root was provided before QML asked for it");
    RavelinthViewModel *root = provider()();
    // Every engine of the process shares the one root; none may delete it when it goes.
    QJSEngine::setObjectOwnership(root, QJSEngine::CppOwnership);
    return root;
}

} // namespace ravelinth::views
