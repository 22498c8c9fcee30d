#include "ui/TimelineEditor.h"

#include <cmath>

namespace stackreel
{

using Geometry = TrimTimelineGeometry;
using enum TimelineInteraction;

void TimelineEditor::setModel(WindowModel* model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model) {
        connect(model, &WindowModel::mediaInfoChanged, this, &TimelineEditor::emitPositionsChanged);
        connect(model, &WindowModel::trimStartChanged, this, &TimelineEditor::startXChanged);
        connect(model, &WindowModel::trimEndChanged, this, &TimelineEditor::endXChanged);
        connect(model, &WindowModel::currentTimeChanged, this, &TimelineEditor::playheadXChanged);
    }
    Q_EMIT modelChanged();
    emitPositionsChanged();
}

void TimelineEditor::setWidth(double width)
{
    if (width == m_width)
        return;
    m_width = width;
    Q_EMIT widthChanged();
    emitPositionsChanged();
}

void TimelineEditor::emitPositionsChanged()
{
    Q_EMIT startXChanged();
    Q_EMIT endXChanged();
    Q_EMIT playheadXChanged();
    Q_EMIT stepChanged();
}

double TimelineEditor::x(double seconds) const
{
    return Geometry::inset + (m_model ? Geometry::position(seconds, m_model->duration(), trackWidth()) : 0);
}

double TimelineEditor::seconds(double x) const
{
    return Geometry::seconds(x - m_dragGrabOffset - Geometry::inset, m_model->duration(), trackWidth());
}

double TimelineEditor::startX() const
{
    return x(m_model ? m_model->trimStart() : 0);
}

double TimelineEditor::endX() const
{
    return x(m_model ? m_model->trimEnd() : 0);
}

double TimelineEditor::playheadX() const
{
    return x(m_model ? m_model->currentTime() : 0);
}

double TimelineEditor::step() const
{
    return Geometry::step(m_model ? m_model->duration() : 0);
}

bool TimelineEditor::isActive(TimelineInteraction handle) const
{
    return m_interaction == handle || m_hoveredHandle == handle;
}

std::optional<TimelineInteraction> TimelineEditor::hitTest(double x) const
{
    return Geometry::hitTest(x, startX(), endX());
}

bool TimelineEditor::reaches(double x, double y) const
{
    return Geometry::onTrack(y) || (Geometry::onHandle(y) && hitTest(x));
}

void TimelineEditor::press(double x)
{
    if (!m_model || m_interaction)
        return;
    m_interaction = hitTest(x).value_or(playhead);
    m_model->model().beginTimelineInteraction();
    if (m_interaction != playhead) {
        // The handle keeps its distance from the pointer instead of jumping to it.
        m_dragGrabOffset = x - (m_interaction == trimStart ? startX() : endX());
        m_cursors.set(Qt::ClosedHandCursor);
        Q_EMIT cursorShapeChanged();
    }
    Q_EMIT activityChanged();
    apply(x);
}

void TimelineEditor::drag(double x)
{
    if (m_model && m_interaction)
        apply(x);
}

void TimelineEditor::apply(double x)
{
    AppModel& model = m_model->model();
    const double time = seconds(x);
    if (m_interaction == playhead)
        model.seekPreview(time);
    else if (m_interaction == trimStart)
        model.updateTrimStart(time);
    else
        model.updateTrimEnd(time);
}

void TimelineEditor::release()
{
    if (!m_model || !m_interaction)
        return;
    const bool handleDragged = m_interaction != playhead;
    m_model->model().endTimelineInteraction(handleDragged);
    m_interaction.reset();
    m_dragGrabOffset = 0;
    if (handleDragged) {
        m_cursors.set(m_hoveredHandle ? Qt::OpenHandCursor : Qt::ArrowCursor);
        Q_EMIT cursorShapeChanged();
    }
    Q_EMIT activityChanged();
}

void TimelineEditor::hover(double x)
{
    if (m_model && !m_interaction)
        setHoveredHandle(hitTest(x));
}

void TimelineEditor::leave()
{
    setHoveredHandle(std::nullopt);
}

void TimelineEditor::setHoveredHandle(std::optional<TimelineInteraction> handle)
{
    if (handle == m_hoveredHandle)
        return;
    if (m_hoveredHandle)
        m_cursors.pop();
    m_hoveredHandle = handle;
    if (handle)
        m_cursors.push(Qt::OpenHandCursor);
    Q_EMIT cursorShapeChanged();
    Q_EMIT activityChanged();
}

void TimelineEditor::adjustPlayhead(int direction)
{
    if (m_model)
        movePlayhead(m_model->currentTime() + direction * step());
}

void TimelineEditor::adjustTrimStart(int direction)
{
    if (m_model)
        moveTrimStart(m_model->trimStart() + direction * step());
}

void TimelineEditor::adjustTrimEnd(int direction)
{
    if (m_model)
        moveTrimEnd(m_model->trimEnd() + direction * step());
}

void TimelineEditor::movePlayhead(double time)
{
    if (canMoveTo(time))
        m_model->model().seekPreview(time);
}

void TimelineEditor::moveTrimStart(double time)
{
    if (!canMoveTo(time))
        return;
    m_model->model().beginTimelineInteraction();
    m_model->model().updateTrimStart(time);
    m_model->model().endTimelineStep();
}

void TimelineEditor::moveTrimEnd(double time)
{
    if (!canMoveTo(time))
        return;
    m_model->model().beginTimelineInteraction();
    m_model->model().updateTrimEnd(time);
    m_model->model().endTimelineStep();
}

bool TimelineEditor::canMoveTo(double time) const
{
    return m_model && m_model->hasMedia() && !std::isnan(time);
}

} // namespace stackreel
