#pragma once

#include "ui/WindowModel.h"

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// Shows the model's timeline thumbnails side by side, or placeholders while there are none. The row is
/// painted again when the thumbnails or the device pixel ratio change or the strip is resized. Thumbnails are
/// painted shortly after a resize ends; during the resize they are stretched. Main thread.
class ThumbnailStrip : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(stackreel::WindowModel* model READ model WRITE setModel NOTIFY modelChanged FINAL)

public:
    explicit ThumbnailStrip(QQuickItem* parent = nullptr);

    WindowModel* model() const { return m_model; }
    void setModel(WindowModel* model);

Q_SIGNALS:
    void modelChanged();

protected:
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

private:
    bool showsThumbnails() const;

    QPointer<WindowModel> m_model;
    QTimer m_resizeTimer;
    QImage m_row;
    bool m_rowChanged = false;
};

} // namespace stackreel
