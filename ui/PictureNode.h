#pragma once

#include "player/base/VideoFrame.h"

#include <QRectF>
#include <QSGNode>

class QQuickWindow;
class QSGImageNode;
class QSGRectangleNode;

namespace stackreel
{

/// A scene graph node that shows a picture over a black background. Works with every scene graph backend.
/// Render thread.
///
/// It is a transform node without a transform, because of a bug in the software backend of Qt 6.4: children
/// added later to a plain node are drawn at the window's origin.
class PictureNode : public QSGTransformNode
{
public:
    explicit PictureNode(QQuickWindow& window);

    /// Sets the rectangle of the black background, in item coordinates.
    void setBounds(const QRectF& bounds);
    /// Shows the frame, or only the background for a frame without pixels. The pixels are not copied.
    void setFrame(const VideoFrame& frame);
    /// Draws the part `source` of the picture, in its pixels, in the rectangle `target`, in item coordinates.
    void placePicture(const QRectF& target, const QRectF& source);

private:
    QQuickWindow& m_window;
    QSGRectangleNode* m_background;    ///< a child node, owned by this node
    QSGImageNode* m_picture = nullptr; ///< a child node, owned by this node; null without a frame
};

} // namespace stackreel
