#include "app/SceneGraph.h"

#include "platform/GraphicsDevice.h"

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

/// What draws with OpenGL here; empty when nothing does.
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
    constexpr std::string_view imitations[] = {"llvmpipe", "softpipe", "swrast", "SwiftShader",
                                               "Software Rasterizer"};
    return !name.empty() &&
           std::none_of(std::begin(imitations), std::end(imitations), [name](std::string_view imitation) {
               return name.find(imitation) != std::string_view::npos;
           });
}

} // namespace

void chooseSceneGraph()
{
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND") && !hasGraphicsProcessor())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

} // namespace stackreel
