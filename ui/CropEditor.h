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

/// Edits one crop region by dragging and by keys. The region is shown over a picture of the size `viewSize`,
/// in points (device-independent pixels). The editor never changes `region` itself: it emits `regionEdited`,
/// and the owner of the region sets the new value. Main thread.
class CropEditor : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    /// The crop region, in fractions of the displayed frame.
    Q_PROPERTY(QRectF region READ region WRITE setRegion NOTIFY regionChanged FINAL)
    /// The aspect ratio (width / height) of one half of the output. Resizing keeps it.
    Q_PROPERTY(double panelAspect MEMBER m_panelAspect NOTIFY panelAspectChanged FINAL)
    Q_PROPERTY(QSizeF viewSize READ viewSize WRITE setViewSize NOTIFY viewSizeChanged FINAL)
    /// The size of the displayed frame in source pixels, in which the arrow keys move the region.
    Q_PROPERTY(QSizeF sourceSize MEMBER m_sourceSize NOTIFY sourceSizeChanged FINAL)
    /// The rectangle in which the region is drawn, in points.
    Q_PROPERTY(QRectF displayRect READ displayRect NOTIFY displayRectChanged FINAL)
    /// The position and size of the region in source pixels, as a text for assistive technology.
    Q_PROPERTY(QString geometryText READ geometryText NOTIFY geometryTextChanged FINAL)

public:
    /// How far the pointer must move, in points, before a press becomes a drag.
    static constexpr double dragThreshold = 1;
    /// How many source pixels a step moves: `ShortStep` by an arrow key, `LongStep` by an arrow key with
    /// Shift or by assistive technology.
    enum Step { ShortStep = 1, LongStep = 10 };
    Q_ENUM(Step)

    explicit CropEditor(QObject* parent = nullptr);

    QRectF region() const;
    void setRegion(const QRectF& region);
    QSizeF viewSize() const { return {m_view.width, m_view.height}; }
    void setViewSize(QSizeF size);
    QRectF displayRect() const;
    QString geometryText() const;
    bool isMoving() const { return m_moveStart.has_value(); }
    bool isResizing() const { return m_resizeStart.has_value(); }

    /// Moves the region. `x` and `y` are the distance in points from where the pointer was pressed.
    Q_INVOKABLE void move(double x, double y);
    Q_INVOKABLE void endMove() { m_moveStart.reset(); }
    /// Resizes the region. `x` and `y` are the distance in points from where the pointer was pressed.
    Q_INVOKABLE void resize(double x, double y);
    Q_INVOKABLE void endResize() { m_resizeStart.reset(); }

    /// Move or resize the region by a number of source pixels. Each call has the effect of a whole drag over
    /// that distance.
    Q_INVOKABLE void stepMove(int x, int y);
    Q_INVOKABLE void stepResize(int x, int y);
    /// Handles a key press: the arrow keys move the region, with Ctrl they resize it, with Shift they use
    /// `LongStep`. Returns false for any other key.
    Q_INVOKABLE bool handleKey(int key, int modifiers);

Q_SIGNALS:
    void regionChanged();
    void panelAspectChanged();
    void viewSizeChanged();
    void sourceSizeChanged();
    void displayRectChanged();
    void geometryTextChanged();
    /// The owner should make this crop the selected one.
    void selectRequested();
    /// The owner should set the region to this value.
    void regionEdited(const QRectF& region);

private:
    ViewTranslation pointsFromSourcePixels(int x, int y) const;
    bool beginDrag(std::optional<CropRegion>& start, ViewTranslation translation) const;

    CropRegion m_region;
    double m_panelAspect = 1;
    ViewSize m_view;
    QSizeF m_sourceSize;
    std::optional<CropRegion> m_moveStart;
    std::optional<CropRegion> m_resizeStart;
};

} // namespace stackreel
