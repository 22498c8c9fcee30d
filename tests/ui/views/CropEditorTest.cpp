#include "ui/CropEditor.h"

#include <QSignalSpy>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace stackreel
{

namespace
{

const QRectF start(0.1, 0.2, 0.225, 0.4); // 225 × 200 points in the view

/// An editor over a picture of 2000 × 1000 pixels that is shown at 1000 × 500 points. As in the window, an
/// owner applies the regions that the editor requests.
struct OwnedEditor {
    OwnedEditor()
    {
        QObject::connect(&editor, &CropEditor::regionEdited, &editor, &CropEditor::setRegion);
        editor.setViewSize(QSizeF(1000, 500));
        editor.setProperty("sourceSize", QSizeF(2000, 1000));
        editor.setProperty("panelAspect", 1.125);
        editor.setRegion(start);
    }

    bool press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        return editor.handleKey(key, static_cast<int>(modifiers.toInt()));
    }

    CropEditor editor;
    QSignalSpy selections{&editor, &CropEditor::selectRequested};
    QSignalSpy edits{&editor, &CropEditor::regionEdited};
};

bool isNear(const QRectF& one, const QRectF& other)
{
    return std::abs(one.x() - other.x()) < 1e-9 && std::abs(one.y() - other.y()) < 1e-9 &&
           std::abs(one.width() - other.width()) < 1e-9 && std::abs(one.height() - other.height()) < 1e-9;
}

TEST(CropEditorTest, ScalesTheRegionToTheView)
{
    const OwnedEditor owned;
    EXPECT_EQ(owned.editor.displayRect(), QRectF(100, 100, 225, 200));
}

TEST(CropEditorTest, DisplayRectChangesWithTheRegionAndTheViewSize)
{
    OwnedEditor owned;
    QSignalSpy changes(&owned.editor, &CropEditor::displayRectChanged);
    owned.editor.setRegion(QRectF(0, 0, 0.5, 0.5));
    owned.editor.setViewSize(QSizeF(600, 400));
    owned.editor.setViewSize(QSizeF(600, 400));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(owned.editor.displayRect(), QRectF(0, 0, 300, 200));
}

TEST(CropEditorTest, DoesNotChangeItsRegionItself)
{
    CropEditor editor;
    editor.setViewSize(QSizeF(1000, 500));
    editor.setRegion(start);
    editor.move(50, 50);
    editor.resize(50, 50);
    EXPECT_EQ(editor.region(), start);
}

TEST(CropEditorTest, EachMoveRequestsTheSelection)
{
    OwnedEditor owned;
    owned.editor.move(10, 0);
    owned.editor.move(20, 0);
    EXPECT_EQ(owned.selections.count(), 2);
    EXPECT_TRUE(isNear(owned.editor.region(), start.translated(0.02, 0)));
}

TEST(CropEditorTest, AResizeDoesNotRequestTheSelection)
{
    OwnedEditor owned;
    owned.editor.resize(0, 50);
    EXPECT_EQ(owned.selections.count(), 0);
    EXPECT_TRUE(isNear(owned.editor.region(), QRectF(0.1, 0.2, 0.28125, 0.5)));
}

TEST(CropEditorTest, IgnoresADragOfLessThanOnePoint)
{
    OwnedEditor owned;
    owned.editor.move(0.6, 0.6);
    owned.editor.resize(-0.9, 0);
    EXPECT_EQ(owned.edits.count(), 0);
    EXPECT_FALSE(owned.editor.isMoving());
    EXPECT_FALSE(owned.editor.isResizing());
    owned.editor.move(0, 1);
    EXPECT_EQ(owned.edits.count(), 1);
}

TEST(CropEditorTest, ADragContinuesWhenThePointerReturnsToItsStart)
{
    OwnedEditor owned;
    owned.editor.move(30, 0);
    owned.editor.move(0, 0);
    EXPECT_EQ(owned.editor.region(), start);
}

TEST(CropEditorTest, KeepsTheStartRegionUntilTheDragEnds)
{
    OwnedEditor owned;
    owned.editor.move(100, 0);
    EXPECT_TRUE(owned.editor.isMoving());
    owned.editor.endMove();
    EXPECT_FALSE(owned.editor.isMoving());
    owned.editor.move(100, 0);
    EXPECT_TRUE(isNear(owned.editor.region(), start.translated(0.2, 0)));
    owned.editor.resize(10, 0);
    EXPECT_TRUE(owned.editor.isResizing());
    owned.editor.endResize();
    EXPECT_FALSE(owned.editor.isResizing());
}

TEST(CropEditorTest, ArrowKeysMoveOrResizeByOneOrTenSourcePixels)
{
    struct Row {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        QRectF region;
    };
    constexpr double x = 1.0 / 2000; // a source pixel
    constexpr double y = 1.0 / 1000;
    const auto resizedTo = [](double height) {
        return QRectF(start.topLeft(), QSizeF(height * 500 * 1.125 / 1000, height));
    };
    for (const Row& row :
         {Row{Qt::Key_Right, Qt::NoModifier, start.translated(x, 0)},
          Row{Qt::Key_Left, Qt::NoModifier, start.translated(-x, 0)},
          Row{Qt::Key_Down, Qt::NoModifier, start.translated(0, y)},
          Row{Qt::Key_Up, Qt::NoModifier, start.translated(0, -y)},
          Row{Qt::Key_Right, Qt::ShiftModifier, start.translated(10 * x, 0)},
          Row{Qt::Key_Up, Qt::ShiftModifier, start.translated(0, -10 * y)},
          Row{Qt::Key_Right, Qt::ControlModifier, resizedTo(225.5 / 1.125 / 500)},
          Row{Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier, resizedTo(0.4 - 10 * y)}}) {
        OwnedEditor owned;
        EXPECT_TRUE(owned.press(row.key, row.modifiers));
        EXPECT_TRUE(isNear(owned.editor.region(), row.region)) << row.key << " with " << row.modifiers;
        EXPECT_EQ(owned.selections.count(), 1);
    }
}

TEST(CropEditorTest, StepsByTheWidthAndHeightOfASourcePixelOnScreen)
{
    OwnedEditor owned;
    owned.editor.setProperty("sourceSize", QSizeF(2000, 400));
    owned.press(Qt::Key_Down);
    owned.press(Qt::Key_Right);
    EXPECT_TRUE(isNear(owned.editor.region(), start.translated(1.0 / 2000, 1.0 / 400)));
}

TEST(CropEditorTest, DoesNotHandleOtherKeys)
{
    OwnedEditor owned;
    EXPECT_FALSE(owned.press(Qt::Key_Space));
    EXPECT_FALSE(owned.press(Qt::Key_Tab, Qt::ShiftModifier));
    EXPECT_EQ(owned.edits.count(), 0);
}

TEST(CropEditorTest, ArrowKeysDoNothingWithoutASourceSize)
{
    OwnedEditor owned;
    owned.editor.setProperty("sourceSize", QSizeF());
    owned.press(Qt::Key_Right);
    EXPECT_EQ(owned.editor.region(), start);
}

double anyBetween(double low, double high)
{
    return low + (high - low) * *rc::gen::inRange(0, 100001) / 1e5;
}

RC_GTEST_PROP(CropEditorProperty, AMoveDependsOnlyOnTheLastPosition, ())
{
    OwnedEditor direct;
    OwnedEditor indirect;
    for (int count = *rc::gen::inRange(0, 10); count > 0; --count)
        indirect.editor.move(anyBetween(-2000, 2000), anyBetween(-2000, 2000));
    const double x = anyBetween(1, 2000);
    const double y = anyBetween(-2000, 2000);
    indirect.editor.move(x, y);
    direct.editor.move(x, y);
    RC_ASSERT(indirect.editor.region() == direct.editor.region());
}

RC_GTEST_PROP(CropEditorProperty, AResizeDependsOnlyOnTheLastPosition, ())
{
    OwnedEditor direct;
    OwnedEditor indirect;
    for (int count = *rc::gen::inRange(0, 10); count > 0; --count)
        indirect.editor.resize(anyBetween(-2000, 2000), anyBetween(-2000, 2000));
    const double x = anyBetween(1, 2000);
    const double y = anyBetween(-2000, 2000);
    indirect.editor.resize(x, y);
    direct.editor.resize(x, y);
    RC_ASSERT(indirect.editor.region() == direct.editor.region());
}

RC_GTEST_PROP(CropEditorProperty, MovingBackRestoresTheStartRegion, ())
{
    OwnedEditor owned;
    owned.editor.move(anyBetween(1, 5000), anyBetween(-5000, 5000));
    owned.editor.move(0, 0);
    RC_ASSERT(owned.editor.region() == start);
}

RC_GTEST_PROP(CropEditorProperty, KeysAndPointerMoveToTheSameRegion, ())
{
    OwnedEditor pressed;
    OwnedEditor dragged;
    const int steps = *rc::gen::inRange(2, 100);
    for (int step = 0; step < steps; ++step)
        pressed.press(Qt::Key_Right);
    dragged.editor.move(steps / 2.0, 0); // two source pixels are a point
    RC_ASSERT(isNear(pressed.editor.region(), dragged.editor.region()));
}

} // namespace

} // namespace stackreel
