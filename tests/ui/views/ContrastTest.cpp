#include "tests/ui/views/ViewsTest.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace stackreel
{

namespace
{

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast ratio of two opaque colours as WCAG defines it, from 1 to 21.
double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor over(const QColor& top, const QColor& bottom)
{
    const float a = top.alphaF();
    return QColor::fromRgbF(top.redF() * a + bottom.redF() * (1 - a),
                            top.greenF() * a + bottom.greenF() * (1 - a),
                            top.blueF() * a + bottom.blueF() * (1 - a));
}

class ContrastTest : public ViewsTest, public testing::WithParamInterface<WindowModel::Phase>
{
protected:
    /// The background of a text item: the most frequent colour in its area, because the letters cover less
    /// than half of it.
    static QColor backgroundOf(const QQuickItem& target, const QImage& picture)
    {
        const QRectF points = target.mapRectToScene(QRectF(0, 0, target.width(), target.height()));
        const double scale = target.window()->effectiveDevicePixelRatio();
        const QRect place =
            QRectF(points.topLeft() * scale, points.size() * scale).toAlignedRect() & picture.rect();
        QHash<QRgb, int> counts;
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                ++counts[picture.pixel(x, y)];
        const auto commonest = std::max_element(counts.cbegin(), counts.cend());
        return commonest == counts.cend() ? QColor() : QColor(commonest.key());
    }

    /// Checks the contrast of all visible texts in an item, except those of disabled controls. Returns the
    /// number of these texts.
    int expectContrast(QQuickItem& target)
    {
        const QImage picture = window().screenshot();
        int texts = 0;
        for (const QQuickItem* each : itemAndDescendants(target)) {
            if (!each->inherits("QQuickText") || !each->isVisible() || !each->isEnabled() ||
                text(*each).isEmpty())
                continue;
            ++texts;
            const QColor background = backgroundOf(*each, picture);
            EXPECT_GE(contrast(over(color(*each), background), background), 4.5) << text(*each).toStdString();
        }
        return texts;
    }
};

TEST_P(ContrastTest, TextsOfTheContentHaveEnoughContrast)
{
    windowModel().setAspectIndex(3);
    enter(GetParam());
    EXPECT_GE(expectContrast(root()), 13);
}

TEST_P(ContrastTest, TextsOfTheMenusAndTheAboutDialogHaveEnoughContrast)
{
    enter(GetParam());
    window().key(Qt::Key_F10);
    EXPECT_EQ(expectContrast(overlay()), 4) << "three commands and a key";
    window().key(Qt::Key_Right);
    EXPECT_EQ(expectContrast(overlay()), 2);
    window().key(Qt::Key_Right);
    EXPECT_EQ(expectContrast(overlay()), windowModel().editable() ? 2 : 0);
    window().key(Qt::Key_Escape);
    window().key(Qt::Key_F10);
    EXPECT_EQ(expectContrast(overlay()), 4) << "one command highlighted";
    window().key(Qt::Key_Return);
    ASSERT_TRUE(item("closeAbout").isVisible());
    EXPECT_GE(expectContrast(overlay()), 4);
}

INSTANTIATE_TEST_SUITE_P(AllPhases, ContrastTest,
                         testing::Values(WindowModel::Empty, WindowModel::Preparing, WindowModel::Ready,
                                         WindowModel::Exporting, WindowModel::Complete, WindowModel::Failed));

} // namespace

} // namespace stackreel
