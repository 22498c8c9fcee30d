#include "ui/CropEditor.h"

#include "ui/geometry/CropOverlayGeometry.h"

#include <cmath>

namespace stackreel
{

namespace
{

QRectF toRectF(const CropRegion& region)
{
    return {region.x, region.y, region.width, region.height};
}

} // namespace

CropEditor::CropEditor(QObject* parent) : QObject(parent)
{
    connect(this, &CropEditor::regionChanged, this, &CropEditor::displayRectChanged);
    connect(this, &CropEditor::viewSizeChanged, this, &CropEditor::displayRectChanged);
    connect(this, &CropEditor::regionChanged, this, &CropEditor::geometryTextChanged);
    connect(this, &CropEditor::sourceSizeChanged, this, &CropEditor::geometryTextChanged);
}

QRectF CropEditor::region() const
{
    return toRectF(m_region);
}

void CropEditor::setRegion(const QRectF& region)
{
    const CropRegion value = {
        .x = region.x(), .y = region.y(), .width = region.width(), .height = region.height()};
    if (value == m_region)
        return;
    m_region = value;
    Q_EMIT regionChanged();
}

void CropEditor::setViewSize(QSizeF size)
{
    const ViewSize value = {.width = size.width(), .height = size.height()};
    if (value == m_view)
        return;
    m_view = value;
    Q_EMIT viewSizeChanged();
}

QRectF CropEditor::displayRect() const
{
    const ViewRect rect = CropOverlayGeometry::displayRect(m_region, m_view);
    return {rect.x, rect.y, rect.width, rect.height};
}

QString CropEditor::geometryText() const
{
    if (m_sourceSize.isEmpty())
        return {};
    const double width = m_sourceSize.width();
    const double height = m_sourceSize.height();
    return tr("Left %1, top %2, width %3, height %4")
        .arg(qRound(m_region.x * width))
        .arg(qRound(m_region.y * height))
        .arg(qRound(m_region.width * width))
        .arg(qRound(m_region.height * height));
}

bool CropEditor::beginDrag(std::optional<CropRegion>& start, ViewTranslation translation) const
{
    if (!start && std::hypot(translation.x, translation.y) < dragThreshold)
        return false;
    if (!start)
        start = m_region;
    return true;
}

void CropEditor::move(double x, double y)
{
    const ViewTranslation translation = {.x = x, .y = y};
    if (!beginDrag(m_moveStart, translation))
        return;
    Q_EMIT selectRequested();
    Q_EMIT regionEdited(toRectF(CropOverlayGeometry::moved(*m_moveStart, m_view, translation)));
}

void CropEditor::resize(double x, double y)
{
    const ViewTranslation translation = {.x = x, .y = y};
    if (!beginDrag(m_resizeStart, translation))
        return;
    Q_EMIT regionEdited(
        toRectF(CropOverlayGeometry::resized(*m_resizeStart, m_view, translation, m_panelAspect)));
}

ViewTranslation CropEditor::pointsFromSourcePixels(int x, int y) const
{
    if (m_sourceSize.isEmpty())
        return {};
    return {.x = x * m_view.width / m_sourceSize.width(), .y = y * m_view.height / m_sourceSize.height()};
}

void CropEditor::stepMove(int x, int y)
{
    Q_EMIT selectRequested();
    Q_EMIT regionEdited(toRectF(CropOverlayGeometry::moved(m_region, m_view, pointsFromSourcePixels(x, y))));
}

void CropEditor::stepResize(int x, int y)
{
    Q_EMIT selectRequested();
    Q_EMIT regionEdited(
        toRectF(CropOverlayGeometry::resized(m_region, m_view, pointsFromSourcePixels(x, y), m_panelAspect)));
}

bool CropEditor::handleKey(int key, int modifiers)
{
    const int length = (modifiers & Qt::ShiftModifier) != 0 ? LongStep : ShortStep;
    const int x = key == Qt::Key_Right ? length : key == Qt::Key_Left ? -length : 0;
    const int y = key == Qt::Key_Down ? length : key == Qt::Key_Up ? -length : 0;
    if (x == 0 && y == 0)
        return false;
    if ((modifiers & Qt::ControlModifier) != 0)
        stepResize(x, y);
    else
        stepMove(x, y);
    return true;
}

} // namespace stackreel
