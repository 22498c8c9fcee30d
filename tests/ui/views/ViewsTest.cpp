#include "tests/ui/views/ViewsTest.h"

#include "media/MediaToolError.h"

#include <QGuiApplication>
#include <QTest>

#include <stdexcept>

namespace stackreel
{

QQuickItem& ViewsTest::child(const char* owner, const char* name)
{
    if (auto* found = item(owner).findChild<QQuickItem*>(QString::fromLatin1(name)))
        return *found;
    throw std::invalid_argument(std::string(owner) + " has no " + name);
}

QQuickItem& ViewsTest::overlay()
{
    for (QQuickItem* child : root().childItems())
        if (child->inherits("QQuickOverlay"))
            return *child;
    throw std::invalid_argument("no popup was ever open");
}

std::vector<QQuickItem*> ViewsTest::itemAndDescendants(QQuickItem& target)
{
    std::vector<QQuickItem*> items = {&target};
    for (std::size_t next = 0; next < items.size(); ++next) {
        const auto children = items[next]->childItems();
        items.insert(items.end(), children.begin(), children.end());
    }
    return items;
}

QRectF ViewsTest::geometry(const QQuickItem& target)
{
    return target.mapRectToItem(&item("contentView"), QRectF(0, 0, target.width(), target.height()));
}

QQuickItem& ViewsTest::background(const QQuickItem& control)
{
    return *control.property("background").value<QQuickItem*>();
}

void ViewsTest::enter(WindowModel::Phase phase)
{
    if (phase == WindowModel::Empty)
        return;
    if (phase == WindowModel::Preparing || phase == WindowModel::Failed) {
        model().chooseSource();
        fakes().openPanel->choose("/clips/Beach day.MOV");
        settle();
        if (phase == WindowModel::Failed)
            fakes().inspections.back().task().fail(MediaToolError::verticalSource());
    } else {
        m_window.load();
        if (phase != WindowModel::Ready)
            m_window.startExport();
        if (phase == WindowModel::Complete)
            fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    }
    settle();
    ASSERT_EQ(windowModel().phase(), phase);
}

void ViewsTest::settle()
{
    m_window.screenshot();
}

void ViewsTest::click(const char* name)
{
    m_window.click(QString::fromLatin1(name));
    settle();
}

void ViewsTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    m_window.key(key, modifiers);
    settle();
}

QPoint ViewsTest::centre(QQuickItem& target)
{
    return target.mapToScene(QPointF(target.width() / 2, target.height() / 2)).toPoint();
}

Qt::CursorShape ViewsTest::cursor()
{
    const QCursor* everywhere = QGuiApplication::overrideCursor();
    return everywhere != nullptr ? everywhere->shape() : m_window.window().cursor().shape();
}

void ViewsTest::press(QPoint position)
{
    QTest::mousePress(&m_window.window(), Qt::LeftButton, Qt::NoModifier, position);
    settle();
}

void ViewsTest::moveTo(QPoint position)
{
    QTest::mouseMove(&m_window.window(), position);
    settle();
}

void ViewsTest::release(QPoint position)
{
    QTest::mouseRelease(&m_window.window(), Qt::LeftButton, Qt::NoModifier, position);
    settle();
}

} // namespace stackreel
