#include "app/SceneGraph.h"

#include "system/GraphicsDevice.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>

#include <algorithm>
#include <string_view>

namespace stackreel
{

namespace
{

/// The name of the OpenGL renderer; empty when there is none.
std::string_view rendererName(QOpenGLContext& context, QOffscreenSurface& surface)
{
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface))
        return {};
    const auto* name = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    return name != nullptr ? name : std::string_view();
}

bool hasGraphicsProcessor()
{
    if (!hasGraphicsDevice())
        return false;
    QOffscreenSurface surface;
    QOpenGLContext context;
    const std::string_view name = rendererName(context, surface);
    constexpr std::string_view softwareRenderers[] = {"llvmpipe", "softpipe", "swrast", "SwiftShader",
                                                      "Software Rasterizer"};
    return !name.empty() && std::none_of(std::begin(softwareRenderers), std::end(softwareRenderers),
                                         [name](std::string_view software) {
                                             return name.find(software) != std::string_view::npos;
                                         });
}

} // namespace

void chooseSceneGraph()
{
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") && !hasGraphicsProcessor())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace stackreel
