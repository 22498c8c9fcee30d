#pragma once

#include "tests/support/window/OfflineWindow.h"

#include <QColor>
#include <QFont>
#include <QQuickItem>
#include <QTest>

#include <gtest/gtest.h>

#include <vector>

namespace stackreel
{

/// The views in the whole window, in a world of fakes. Whatever the toolkit warns of fails the test.
class ViewsTest : public testing::Test
{
protected:
    ViewsTest() { settle(); }

    AppModel& model() { return m_window.model(); }
    WindowModel& windowModel() { return m_window.windowModel(); }
    FakeServices& world() { return m_window.world(); }
    OfflineWindow& window() { return m_window; }

    QQuickItem& item(const char* name) { return m_window.item(QString::fromLatin1(name)); }
    /// What has this name within what has the other.
    QQuickItem& part(const char* owner, const char* name);
    /// What the whole window is drawn from, open popups included.
    QQuickItem& root() { return *m_window.window().contentItem(); }
    /// What lies over the rest: the popups that are open.
    QQuickItem& overlay();
    /// An item and all that is drawn in it, or would be.
    static std::vector<QQuickItem*> everythingIn(QQuickItem& target);
    /// Where the item is, in points of the content below the title strip.
    QRectF place(const QQuickItem& target);
    QRectF place(const char* name) { return place(item(name)); }

    static QString text(const QQuickItem& target) { return target.property("text").toString(); }
    static QFont font(const QQuickItem& target) { return target.property("font").value<QFont>(); }
    static QColor color(const QQuickItem& target) { return target.property("color").value<QColor>(); }
    static QQuickItem& background(const QQuickItem& control);

    /// Takes the window to a phase in the way a user would.
    void enter(WindowModel::Phase phase);

    // Pointer and keys; positions are in points of the window.
    void press(QPoint position);
    void moveTo(QPoint position);
    void release(QPoint position);
    QPoint centre(QQuickItem& target);
    void click(const char* name);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void focus(const char* name) { item(name).forceActiveFocus(Qt::TabFocusReason); }
    /// Runs what is pending, and lays out and paints what came of it.
    void settle();

    /// Whether it becomes so within a time that no machine is too busy for.
    template <typename Condition>
    static bool soon(Condition condition)
    {
        return QTest::qWaitFor(condition, 30000);
    }

private:
    OfflineWindow m_window;
};

} // namespace stackreel
