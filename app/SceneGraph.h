#pragma once

namespace stackreel
{

/// Decides how windows are drawn, before the first one is made: by the graphics processor, or, on systems
/// that have none and would only imitate one at twice the cost, by the toolkit's own software renderer. The
/// toolkit's environment variable QT_QUICK_BACKEND overrides it. Needs a `QGuiApplication`; main thread.
void chooseSceneGraph();

} // namespace stackreel
