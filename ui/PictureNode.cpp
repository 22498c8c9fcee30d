#include "ui/PictureNode.h"

#include <QColor>
#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>

#include <memory>

namespace stackreel
{

namespace
{

using FrameOwner = std::shared_ptr<const void>;

/// An image that shares the pixels of the frame and keeps them alive.
QImage imageOf(const VideoFrame& frame)
{
    const auto release = [](void* owner) { delete static_cast<FrameOwner*>(owner); };
    return QImage(reinterpret_cast<const uchar*>(frame.pixels), frame.width, frame.height, frame.bytesPerLine,
                  QImage::Format_RGB32, release, new FrameOwner(frame.owner));
}

} // namespace

PictureNode::PictureNode(QQuickWindow& window) : m_window(window), m_background(window.createRectangleNode())
{
    m_background->setColor(Qt::black);
    appendChildNode(m_background);
}

void PictureNode::setBounds(const QRectF& bounds)
{
    m_background->setRect(bounds);
}

void PictureNode::setFrame(const VideoFrame& frame)
{
    if (frame.pixels == nullptr) {
        // The destructor also removes the node from its parent.
        delete m_picture;
        m_picture = nullptr;
        return;
    }
    const bool isFirst = m_picture == nullptr;
    if (isFirst) {
        m_picture = m_window.createImageNode();
        m_picture->setOwnsTexture(true);
        m_picture->setFiltering(QSGTexture::Linear);
    }
    m_picture->setTexture(m_window.createTextureFromImage(imageOf(frame), QQuickWindow::TextureIsOpaque));
    // An image node must have a texture before it is added to the tree.
    if (isFirst)
        appendChildNode(m_picture);
}

void PictureNode::placePicture(const QRectF& target, const QRectF& source)
{
    if (m_picture == nullptr)
        return;
    m_picture->setSourceRect(source);
    m_picture->setRect(target);
}

} // namespace stackreel
