#pragma once

#include "platform/playback/VideoFrame.h"

#include <QRectF>
#include <QSGNode>

class QQuickWindow;
class QSGImageNode;
class QSGRectangleNode;

namespace stackreel
{

/// A picture over black in the scene graph, whichever one the window uses. Rendering thread.
///
/// A transform node, though it transforms nothing: under a plain node, the software scene graph of Qt 6.4
/// draws children that were added later at the window's origin.
class PictureNode : public QSGTransformNode
{
public:
    explicit PictureNode(QQuickWindow& window);

    /// The black area, in the item's points.
    void setBounds(const QRectF& bounds);
    /// Shows the frame, or black for one without pixels. Its pixels are used where they are.
    void setFrame(const VideoFrame& frame);
    /// Where the picture is drawn.
    void setPictureRect(const QRectF& rect);

private:
    QQuickWindow& m_window;
    QSGRectangleNode* m_background; ///< a child of this node, as is the picture
    QSGImageNode* m_picture = nullptr;
};

} // namespace stackreel
