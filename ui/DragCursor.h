#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// Shows a cursor shape everywhere during a drag, also over other items and outside the window. Without it,
/// Qt Quick shows the shape of the item under the pointer. Main thread.
class DragCursor : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /// Whether the drag is running. The destructor ends it.
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY activeChanged FINAL)
    Q_PROPERTY(Qt::CursorShape shape READ shape WRITE setShape NOTIFY shapeChanged FINAL)

public:
    explicit DragCursor(QObject* parent = nullptr) : QObject(parent) {}
    ~DragCursor() override { setActive(false); }

    bool active() const { return m_active; }
    void setActive(bool active);
    Qt::CursorShape shape() const { return m_shape; }
    void setShape(Qt::CursorShape shape);

Q_SIGNALS:
    void activeChanged();
    void shapeChanged();

private:
    bool m_active = false;
    Qt::CursorShape m_shape = Qt::ArrowCursor;
};

} // namespace stackreel
