#include "tests/support/window/WindowWithFakes.h"

#include "tests/support/Awaited.h"

#include <QCoreApplication>
#include <QTest>

#include <stdexcept>

namespace stackreel
{

namespace
{

/// Finds an item by its object name among the descendants of an item. The items of popups are among those of
/// the window, because they are children of its overlay.
QQuickItem* descendant(QQuickItem* item, const QString& objectName)
{
    if (item->objectName() == objectName)
        return item;
    for (QQuickItem* child : item->childItems())
        if (QQuickItem* found = descendant(child, objectName))
            return found;
    return nullptr;
}

} // namespace

WindowWithFakes::WindowWithFakes(QSize size)
    : m_model(m_fakes.services()),
      m_windowModel(m_model),
      m_actions([this] { ++m_updateChecks; }),
      m_mainWindow(std::make_unique<MainWindow>(m_windowModel, m_actions))
{
    m_mainWindow->show();
    window().resize(size);
    if (!QTest::qWaitForWindowExposed(&window(), int(std::chrono::milliseconds(ceiling).count())))
        throw std::runtime_error("the window was never shown");
    window().requestActivate();
    settle();
}

void WindowWithFakes::load(const MediaInfo& media, const std::filesystem::path& file)
{
    m_model.chooseSource();
    m_fakes.openPanel->choose(file);
    settle();
    m_fakes.inspections.back().task().complete(media);
    m_fakes.previews.back().task().complete(file);
    settle();
}

void WindowWithFakes::finishThumbnails(int count)
{
    constexpr Qt::GlobalColor colours[] = {Qt::darkRed, Qt::darkGreen, Qt::darkBlue, Qt::darkCyan};
    std::vector<VideoFrame> pictures;
    for (int index = 0; index < count; ++index)
        pictures.push_back(picture(QSize(320, 180), colours[index % 4]));
    m_fakes.thumbnails.back().task().complete(std::move(pictures));
    settle();
}

void WindowWithFakes::startExport(const std::filesystem::path& file)
{
    m_model.chooseExportDestination();
    m_fakes.savePanel->choose(file);
    settle();
}

void WindowWithFakes::showPicture(QSize pixels, Qt::GlobalColor colour)
{
    if (const auto output = player().videoOutput())
        output->present(picture(pixels, colour));
    settle();
}

VideoFrame WindowWithFakes::picture(QSize pixels, Qt::GlobalColor colour)
{
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(colour);
    return picture(image);
}

VideoFrame WindowWithFakes::picture(const QImage& image)
{
    const auto owned = std::make_shared<const QImage>(image.convertToFormat(QImage::Format_RGB32));
    return {.owner = owned,
            .pixels = reinterpret_cast<const std::byte*>(owned->constBits()),
            .width = owned->width(),
            .height = owned->height(),
            .bytesPerLine = owned->bytesPerLine()};
}

QQuickItem* WindowWithFakes::find(const QString& objectName)
{
    if (QQuickItem* found = descendant(window().contentItem(), objectName))
        return found;
    // Items of a menu that was never opened have no parent item yet.
    return window().findChild<QQuickItem*>(objectName);
}

QQuickItem& WindowWithFakes::item(const QString& objectName)
{
    if (QQuickItem* found = find(objectName))
        return *found;
    throw std::invalid_argument("the window has no item " + objectName.toStdString());
}

QPoint WindowWithFakes::centre(const QString& objectName)
{
    const QQuickItem& target = item(objectName);
    return target.mapToScene(QPointF(target.width() / 2, target.height() / 2)).toPoint();
}

void WindowWithFakes::click(const QString& objectName)
{
    QTest::mouseClick(&window(), Qt::LeftButton, Qt::NoModifier, centre(objectName));
    settle();
}

void WindowWithFakes::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&window(), key, modifiers);
    settle();
}

QImage WindowWithFakes::screenshot()
{
    settle();
    return window().grabWindow();
}

void WindowWithFakes::settle()
{
    // Several rounds, because an event may post another one.
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

} // namespace stackreel
