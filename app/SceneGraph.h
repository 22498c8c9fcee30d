#pragma once

namespace stackreel
{

/// Chooses the graphics API of Qt Quick; call it before the first window is created. The choice is Qt Quick's
/// software renderer on systems without a graphics processor, where OpenGL in software costs twice as much.
/// The environment variable QT_QUICK_BACKEND overrides it. Needs a `QGuiApplication`; main thread.
void chooseSceneGraph();

} // namespace stackreel
