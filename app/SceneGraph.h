#pragma once

namespace stackreel
{

/// Chooses the graphics API of Qt Quick; call it before the first window is created. On systems without a
/// graphics processor it chooses Qt Quick's software renderer, because OpenGL in software takes twice the
/// processor time. The environment variable QT_QUICK_BACKEND overrides it. Needs a `QGuiApplication`; main
/// thread.
void chooseSceneGraph();

} // namespace stackreel
