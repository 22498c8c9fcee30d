#include "ui/PlayerSurface.h"

#include "player/PreviewPlayer.h"
#include "ui/FrameMailbox.h"
#include "ui/PictureNode.h"
#include "ui/geometry/PictureGeometry.h"

#include <QQuickWindow>

#include <chrono>

namespace stackreel
{

namespace
{

// While the window is being resized, frames are stretched. A new video size restarts the player's pipeline,
// so no frames would be shown at all if each intermediate size were sent.
constexpr std::chrono::milliseconds resizeDelay{120};

} // namespace

PlayerSurface::PlayerSurface(QQuickItem* parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    m_resizeTimer.setSingleShot(true);
    m_resizeTimer.setInterval(resizeDelay);
    connect(&m_resizeTimer, &QTimer::timeout, this, &PlayerSurface::sendVideoSize);
}

PlayerSurface::~PlayerSurface()
{
    if (m_mailbox)
        m_mailbox->close();
}

void PlayerSurface::setModel(WindowModel* model)
{
    if (m_model == model)
        return;
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    m_model = model;
    if (m_model) {
        connect(m_model, &WindowModel::mediaInfoChanged, this, &QQuickItem::update);
        connect(m_model, &WindowModel::playerChanged, this, &PlayerSurface::attachPlayer);
    }
    attachPlayer();
    Q_EMIT modelChanged();
}

void PlayerSurface::attachPlayer()
{
    const auto player = m_model ? m_model->model().player() : nullptr;
    const auto previous = m_player.lock();
    if (player == previous && (m_mailbox != nullptr) == (player != nullptr))
        return;
    if (previous)
        previous->setVideoOutput(nullptr);
    // Each player gets its own mailbox, so a late frame of the previous player is dropped.
    if (m_mailbox)
        m_mailbox->close();
    m_mailbox.reset();
    m_player = player;
    m_sentSize = {};
    if (player) {
        // Call it by name: Qt protects a function object by locks that the thread sanitizer does not see.
        m_mailbox = std::make_shared<FrameMailbox>(
            [this] { QMetaObject::invokeMethod(this, "update", Qt::QueuedConnection); });
        player->setVideoOutput(m_mailbox);
    }
    m_frame = {};
    update();
}

void PlayerSurface::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        sizeChanged();
    update();
}

void PlayerSurface::itemChange(ItemChange change, const ItemChangeData& data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange)
        sizeChanged();
    if (change == ItemParentHasChanged || change == ItemSceneChange)
        connectToAncestors();
}

void PlayerSurface::connectToAncestors()
{
    for (const auto& connection : m_ancestorConnections)
        disconnect(connection);
    m_ancestorConnections.clear();
    for (QQuickItem* ancestor = parentItem(); ancestor != nullptr; ancestor = ancestor->parentItem()) {
        m_ancestorConnections.push_back(connect(ancestor, &QQuickItem::xChanged, this, &QQuickItem::update));
        m_ancestorConnections.push_back(connect(ancestor, &QQuickItem::yChanged, this, &QQuickItem::update));
    }
}

void PlayerSurface::sizeChanged()
{
    if (m_sentSize.isValid())
        m_resizeTimer.start();
    update();
}

void PlayerSurface::sendVideoSize()
{
    const auto player = m_player.lock();
    if (!player || window() == nullptr)
        return;
    const ViewSize exact = videoSize(viewSize(), window()->effectiveDevicePixelRatio());
    const QSize size(static_cast<int>(exact.width), static_cast<int>(exact.height));
    if (size.isEmpty() || size == m_sentSize)
        return;
    m_sentSize = size;
    player->setVideoSize(size.width(), size.height());
}

QSGNode* PlayerSurface::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData*)
{
    // The first video size is sent here because the layout is complete by now. An earlier size might change
    // and would start the player twice.
    if (!m_sentSize.isValid())
        QMetaObject::invokeMethod(this, &PlayerSurface::sendVideoSize, Qt::QueuedConnection);
    const auto arrived = m_mailbox ? m_mailbox->take() : std::nullopt;
    if (arrived)
        m_frame = *arrived;
    auto* node = static_cast<PictureNode*>(oldNode);
    const bool isNew = node == nullptr;
    if (isNew)
        node = new PictureNode(*window());
    if (isNew || arrived || m_frame.pixels == nullptr)
        node->setFrame(m_frame);
    placeContent(*node);
    return node;
}

void PlayerSurface::placeContent(PictureNode& node) const
{
    const auto rect = [](const ViewRect& each) { return QRectF(each.x, each.y, each.width, each.height); };
    const QPointF origin = mapToScene(QPointF());
    const PixelGrid grid = {.devicePixelRatio = window()->effectiveDevicePixelRatio(),
                            .originX = origin.x(),
                            .originY = origin.y()};
    // The aspect ratio of the facts: the export crops stored pixels, whatever their shape.
    const PicturePlacement placement =
        placePicture({.width = double(m_frame.width), .height = double(m_frame.height)},
                     m_model ? m_model->displayAspect() : 0, viewSize(), grid);
    node.setBounds(rect(grid.snapped({.width = width(), .height = height()})));
    node.placePicture(rect(placement.target), rect(placement.source));
}

} // namespace stackreel
