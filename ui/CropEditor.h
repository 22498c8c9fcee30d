#pragma once

#include "framing/CropRegion.h"
#include "ui/geometry/ViewGeometry.h"

#include <QObject>
#include <QRectF>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

#include <optional>

namespace stackreel
{

/// Edits one crop region over a picture of `viewSize` points, by dragging and by keys. It never changes
/// `region` itself: it asks for the change, and whoever owns the region writes it and hands it back. So one
/// region has one owner. Main thread.
class CropEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /// In fractions of the displayed frame.
    Q_PROPERTY(QRectF region READ region WRITE setRegion NOTIFY regionChanged FINAL)
    /// Width / height of one half of the output; the shape that resizing keeps.
    Q_PROPERTY(double panelAspect MEMBER m_panelAspect NOTIFY panelAspectChanged FINAL)
    Q_PROPERTY(QSizeF viewSize READ viewSize WRITE setViewSize NOTIFY viewSizeChanged FINAL)
    /// The displayed frame in source pixels, by which the keys step.
    Q_PROPERTY(QSizeF sourceSize MEMBER m_sourceSize NOTIFY sourceSizeChanged FINAL)
    /// Where the region is drawn, in points.
    Q_PROPERTY(QRectF displayRect READ displayRect NOTIFY displayRectChanged FINAL)
    /// Where the region is and how large, in words and source pixels; for assistive technology.
    Q_PROPERTY(QString placeText READ placeText NOTIFY placeTextChanged FINAL)

public:
    /// How far a pointer has to come, in points, before a press becomes a drag.
    static constexpr double smallestDrag = 1;
    /// Source pixels that a key moves: alone, and with Shift or by assistive technology.
    enum Step { ShortStep = 1, LongStep = 10 };
    Q_ENUM(Step)

    explicit CropEditor(QObject* parent = nullptr);

    QRectF region() const;
    void setRegion(const QRectF& region);
    QSizeF viewSize() const { return {m_view.width, m_view.height}; }
    void setViewSize(QSizeF size);
    QRectF displayRect() const;
    QString placeText() const;
    bool isMoving() const { return m_moveStart.has_value(); }
    bool isResizing() const { return m_resizeStart.has_value(); }

    /// The pointer has dragged the body by so many points since it was pressed.
    Q_INVOKABLE void move(double x, double y);
    Q_INVOKABLE void endMove() { m_moveStart.reset(); }
    /// The pointer has dragged the handle by so many points since it was pressed.
    Q_INVOKABLE void resize(double x, double y);
    Q_INVOKABLE void endResize() { m_resizeStart.reset(); }

    /// A key moves the body or the handle by source pixels. The same as a drag that far, begun and ended.
    Q_INVOKABLE void stepMove(int x, int y);
    Q_INVOKABLE void stepResize(int x, int y);
    /// Does what a key stands for: the arrows move, with Ctrl they resize, with Shift they go further. False
    /// for any other key.
    Q_INVOKABLE bool pressKey(int key, int modifiers);

Q_SIGNALS:
    void regionChanged();
    void panelAspectChanged();
    void viewSizeChanged();
    void sourceSizeChanged();
    void displayRectChanged();
    void placeTextChanged();
    /// This crop is to become the selected one.
    void selectRequested();
    /// The region is to become this one.
    void regionEdited(const QRectF& region);

private:
    ViewTranslation pointsOf(int x, int y) const;
    bool beginDrag(std::optional<CropRegion>& start, ViewTranslation translation) const;

    CropRegion m_region;
    double m_panelAspect = 1;
    ViewSize m_view;
    QSizeF m_sourceSize;
    std::optional<CropRegion> m_moveStart;
    std::optional<CropRegion> m_resizeStart;
};

} // namespace stackreel
