#include "ui/ThumbnailStrip.h"

#include "ui/ThumbnailPainter.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <chrono>

namespace stackreel
{

namespace
{

// The row is painted once at the end of a window resize, because smooth scaling takes too long for each step
// of it.
constexpr std::chrono::milliseconds resizeDelay{120};

} // namespace

ThumbnailStrip::ThumbnailStrip(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    m_resizeTimer.setSingleShot(true);
    m_resizeTimer.setInterval(resizeDelay);
    connect(&m_resizeTimer, &QTimer::timeout, this, &QQuickItem::polish);
}

void ThumbnailStrip::setModel(WindowModel* model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    if (model)
        connect(model, &WindowModel::timelineThumbnailsChanged, this, &QQuickItem::polish);
    Q_EMIT modelChanged();
    polish();
}

void ThumbnailStrip::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        if (isVisible() && showsThumbnails())
            m_resizeTimer.start();
        else
            polish();
    }
    update();
}

void ThumbnailStrip::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    // The layout may have changed the size while the strip was hidden.
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange ||
        change == ItemVisibleHasChanged)
        polish();
}

bool ThumbnailStrip::showsThumbnails() const
{
    return m_model && !m_model->model().timelineThumbnails().empty() && !m_row.isNull();
}

void ThumbnailStrip::updatePolish()
{
    static const std::vector<VideoFrame> none;
    m_row = window() ? ThumbnailPainter::paint(m_model ? m_model->model().timelineThumbnails() : none, size(),
                                               window()->effectiveDevicePixelRatio())
                     : QImage();
    m_rowChanged = true;
    update();
}

QSGNode* ThumbnailStrip::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* /*data*/)
{
    auto* node = static_cast<QSGImageNode*>(oldNode);
    if (m_row.isNull()) {
        delete node;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        m_rowChanged = true;
    }
    if (m_rowChanged)
        node->setTexture(window()->createTextureFromImage(m_row));
    m_rowChanged = false;
    node->setRect(boundingRect());
    return node;
}

} // namespace stackreel
