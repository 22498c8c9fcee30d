#pragma once

#include "ui/CursorStack.h"
#include "ui/WindowModel.h"
#include "ui/geometry/TrimTimelineGeometry.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace stackreel
{

/// Translates input by pointer, keys and assistive technology on the trim timeline into operations of the
/// model. Tracks what is dragged, which handle is hovered and which cursor to show. Positions are x
/// coordinates from 0 to `width`, in points (device-independent pixels). Does nothing without a model. Main
/// thread.
class TimelineEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(stackreel::WindowModel* model READ model WRITE setModel NOTIFY modelChanged FINAL)
    Q_PROPERTY(double width READ width WRITE setWidth NOTIFY widthChanged FINAL)

    Q_PROPERTY(double inset READ inset CONSTANT FINAL)
    Q_PROPERTY(double trackWidth READ trackWidth NOTIFY widthChanged FINAL)
    Q_PROPERTY(double startX READ startX NOTIFY startXChanged FINAL)
    Q_PROPERTY(double endX READ endX NOTIFY endXChanged FINAL)
    Q_PROPERTY(double playheadX READ playheadX NOTIFY playheadXChanged FINAL)
    Q_PROPERTY(double step READ step NOTIFY stepChanged FINAL) ///< seconds

    /// Whether the start handle, the end handle or the playhead is being dragged.
    Q_PROPERTY(bool draggingStart READ draggingStart NOTIFY activityChanged FINAL)
    Q_PROPERTY(bool draggingEnd READ draggingEnd NOTIFY activityChanged FINAL)
    Q_PROPERTY(bool draggingPlayhead READ draggingPlayhead NOTIFY activityChanged FINAL)
    /// Whether the start or the end handle is hovered or being dragged.
    Q_PROPERTY(bool startActive READ startActive NOTIFY activityChanged FINAL)
    Q_PROPERTY(bool endActive READ endActive NOTIFY activityChanged FINAL)
    Q_PROPERTY(Qt::CursorShape cursorShape READ cursorShape NOTIFY cursorShapeChanged FINAL)

public:
    explicit TimelineEditor(QObject* parent = nullptr) : QObject(parent) {}

    WindowModel* model() const { return m_model; }
    void setModel(WindowModel* model);
    double width() const { return m_width; }
    void setWidth(double width);

    static double inset() { return TrimTimelineGeometry::inset; }
    double trackWidth() const { return TrimTimelineGeometry::trackWidth(m_width); }
    double startX() const;
    double endX() const;
    double playheadX() const;
    double step() const;

    std::optional<TimelineInteraction> interaction() const { return m_interaction; }
    std::optional<TimelineInteraction> hoveredHandle() const { return m_hoveredHandle; }
    double dragGrabOffset() const { return m_dragGrabOffset; }
    const CursorStack& cursors() const { return m_cursors; }
    bool draggingStart() const { return m_interaction == TimelineInteraction::trimStart; }
    bool draggingEnd() const { return m_interaction == TimelineInteraction::trimEnd; }
    bool draggingPlayhead() const { return m_interaction == TimelineInteraction::playhead; }
    bool startActive() const { return isActive(TimelineInteraction::trimStart); }
    bool endActive() const { return isActive(TimelineInteraction::trimEnd); }
    Qt::CursorShape cursorShape() const { return m_cursors.current(); }

    /// Whether the timeline takes the pointer there. `y` is in points below the top of the track. Only the
    /// handles' hit areas extend beyond the track.
    Q_INVOKABLE bool reaches(double x, double y) const;

    /// A drag consists of one `press`, any number of calls of `drag`, and one `release`. `press` grabs a
    /// handle if there is one at `x`; otherwise it seeks.
    Q_INVOKABLE void press(double x);
    Q_INVOKABLE void drag(double x);
    Q_INVOKABLE void release();

    /// The pointer moves over the timeline, or leaves it.
    Q_INVOKABLE void hover(double x);
    Q_INVOKABLE void leave();

    /// Move the playhead or a handle by one step: forwards if `direction` is positive, backwards if it is
    /// negative.
    Q_INVOKABLE void adjustPlayhead(int direction);
    Q_INVOKABLE void adjustTrimStart(int direction);
    Q_INVOKABLE void adjustTrimEnd(int direction);

    /// Move to a time in seconds, within the limits of the model. A time that is not a number does nothing.
    Q_INVOKABLE void movePlayhead(double time);
    Q_INVOKABLE void moveTrimStart(double time);
    Q_INVOKABLE void moveTrimEnd(double time);

Q_SIGNALS:
    void modelChanged();
    void widthChanged();
    void startXChanged();
    void endXChanged();
    void playheadXChanged();
    void stepChanged();
    void activityChanged();
    void cursorShapeChanged();

private:
    void emitPositionsChanged();
    double x(double seconds) const;
    double seconds(double x) const;
    bool isActive(TimelineInteraction handle) const;
    std::optional<TimelineInteraction> hitTest(double x) const;
    void apply(double x);
    bool canMoveTo(double time) const;
    void setHoveredHandle(std::optional<TimelineInteraction> handle);

    QPointer<WindowModel> m_model;
    double m_width = 0;
    std::optional<TimelineInteraction> m_interaction;
    std::optional<TimelineInteraction> m_hoveredHandle;
    double m_dragGrabOffset = 0;
    CursorStack m_cursors;
};

} // namespace stackreel
