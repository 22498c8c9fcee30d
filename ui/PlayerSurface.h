#pragma once

#include "player/base/VideoFrame.h"
#include "ui/WindowModel.h"
#include "ui/geometry/ViewGeometry.h"

#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <vector>

namespace stackreel
{

class FrameMailbox;
class PictureNode;

/// Shows the frames of the model's preview player over a black background: whole, centred and in
/// the displayed aspect ratio of the model's media, which the crops use as well. When the model's player
/// changes, the surface switches to the new one. Takes no input.
///
/// The surface sets the player's video size to its own size in device pixels (`videoSize`), when it is first
/// painted and shortly after each resize ends, so that frames arrive at the size they are shown at.
/// Destroying the surface does not change the player.
class PlayerSurface : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(stackreel::WindowModel* model READ model WRITE setModel NOTIFY modelChanged REQUIRED FINAL)

public:
    explicit PlayerSurface(QQuickItem* parent = nullptr);
    ~PlayerSurface() override;

    WindowModel* model() const { return m_model; }
    void setModel(WindowModel* model);

Q_SIGNALS:
    void modelChanged();

protected:
    QSGNode* updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

private:
    void attachPlayer();
    void connectToAncestors();
    void sizeChanged();
    void sendVideoSize();
    ViewSize viewSize() const { return {.width = width(), .height = height()}; }
    void placeContent(PictureNode& node) const;

    QPointer<WindowModel> m_model;
    std::weak_ptr<PreviewPlayer> m_player;
    std::shared_ptr<FrameMailbox> m_mailbox; ///< of the current player; null without a player
    VideoFrame m_frame; ///< the frame on screen; accessed while the scene is synchronised
    QTimer m_resizeTimer;
    QSize m_sentSize; ///< the video size last sent to the current player
    /// Connections to the positions of all ancestors: moving an ancestor moves this item on the screen
    /// without a change of its own geometry.
    std::vector<QMetaObject::Connection> m_ancestorConnections;
};

} // namespace stackreel
