#pragma once

#include "tests/support/window/WindowWithFakes.h"

#include <QColor>
#include <QFont>
#include <QQuickItem>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace stackreel
{

/// Tests the views in the whole window, with fake services. Any warning of Qt makes the test fail.
class ViewsTest : public testing::Test
{
protected:
    ViewsTest() { settle(); }

    AppModel& model() { return m_window.model(); }
    WindowModel& windowModel() { return m_window.windowModel(); }
    FakeServices& fakes() { return m_window.fakes(); }
    WindowWithFakes& window() { return m_window; }

    QQuickItem& item(const char* name) { return m_window.item(QString::fromLatin1(name)); }
    /// The item `name` inside the item `owner`.
    QQuickItem& child(const char* owner, const char* name);
    /// The root item of the window; the overlay for popups is one of its children.
    QQuickItem& root() { return *m_window.window().contentItem(); }
    /// The overlay that contains the open popups.
    QQuickItem& overlay();
    /// An item and all its descendants, visible or not.
    static std::vector<QQuickItem*> itemAndDescendants(QQuickItem& target);
    /// The item's rectangle, in points relative to the content below the title bar.
    QRectF geometry(const QQuickItem& target);
    QRectF geometry(const char* name) { return geometry(item(name)); }

    static QString text(const QQuickItem& target) { return target.property("text").toString(); }
    static QFont font(const QQuickItem& target) { return target.property("font").value<QFont>(); }
    static QColor color(const QQuickItem& target) { return target.property("color").value<QColor>(); }
    static QQuickItem& background(const QQuickItem& control);

    /// Brings the window into a phase by the same steps as a user.
    void enter(WindowModel::Phase phase);

    // Send pointer and key events. Positions are in the window, in points.
    void press(QPoint position);
    void moveTo(QPoint position);
    void release(QPoint position);
    QPoint centre(QQuickItem& target);
    void click(const char* name);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The cursor shape on screen.
    Qt::CursorShape cursor();
    void focus(const char* name) { item(name).forceActiveFocus(Qt::TabFocusReason); }
    /// Processes pending events, then lays out and paints the window.
    void settle();

    /// Waits until the condition is true; false after 30 s.
    template <typename Condition>
    static bool becomesTrue(Condition condition)
    {
        return QTest::qWaitFor(condition, 30000);
    }

private:
    WindowWithFakes m_window;
};

} // namespace stackreel
