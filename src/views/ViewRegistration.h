#pragma once

namespace ravelinth::views {

// Makes the core's objects known to QML under the module "Ravelinth": the view model and the
// preferences as creatable types, the app context and the icon table as singletons. Call it
// once, before the first engine loads a view.
void registerViewTypes();

} // namespace ravelinth::views
