#include "media/MediaToolError.h"
#include "tests/support/window/WindowWithFakes.h"

#include <QDir>
#include <QImageReader>
#include <QTest>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

/// Writes screenshots of the window in each of its states, for visual review. Environment variables:
/// STACKREEL_SCREENSHOTS is the folder for them, STACKREEL_SCREENSHOT_FRAME is a file with the picture to
/// show as the clip.
class WindowScreenshots : public testing::Test
{
protected:
    void SetUp() override
    {
        m_folder = qEnvironmentVariable("STACKREEL_SCREENSHOTS");
        if (m_folder.isEmpty())
            GTEST_SKIP() << "no folder to write to";
        ASSERT_TRUE(QDir().mkpath(m_folder));
        m_frame = QImageReader(qEnvironmentVariable("STACKREEL_SCREENSHOT_FRAME")).read();
        if (m_frame.isNull()) {
            m_frame = QImage(1920, 1080, QImage::Format_RGB32);
            m_frame.fill(Qt::darkCyan);
        }
    }

    VideoFrame frame(QSize size) const
    {
        return WindowWithFakes::picture(
            m_frame.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }

    void load(WindowWithFakes& window, const std::filesystem::path& file = "/clips/Beach day.MOV") const
    {
        window.load(WindowWithFakes::clip(75), file);
        window.player().videoOutput()->present(frame(QSize(1920, 1080)));
        std::vector<VideoFrame> thumbnails(12, frame(QSize(320, 180)));
        window.fakes().thumbnails.back().task().complete(thumbnails);
        window.model().updateTrimStart(9);
        window.model().updateTrimEnd(52);
        window.model().seekPreview(27);
    }

    void load(WindowWithFakes& window, const MediaInfo& media) const
    {
        window.load(media);
        window.player().videoOutput()->present(frame(QSize(int(media.width), int(media.height))));
    }

    void save(WindowWithFakes& window, const QString& name) const
    {
        window.item(QStringLiteral("contentView")); // throws if the window has no content
        ASSERT_TRUE(window.screenshot().save(QDir(m_folder).filePath(name + QStringLiteral(".png"))));
    }

private:
    QString m_folder;
    QImage m_frame;
};

TEST_F(WindowScreenshots, Empty)
{
    WindowWithFakes window;
    save(window, QStringLiteral("empty"));
}

TEST_F(WindowScreenshots, Preparing)
{
    WindowWithFakes window;
    window.model().chooseSource();
    window.fakes().openPanel->choose("/clips/Beach day.MOV");
    save(window, QStringLiteral("preparing"));
}

TEST_F(WindowScreenshots, Ready)
{
    WindowWithFakes window;
    load(window);
    save(window, QStringLiteral("ready"));
}

TEST_F(WindowScreenshots, ReadyWithoutThumbnails)
{
    WindowWithFakes window;
    window.load();
    window.model().setSelectedCrop(1);
    window.model().setPreviewMuted(false);
    window.key(Qt::Key_Tab);
    window.key(Qt::Key_Tab);
    window.key(Qt::Key_Tab);
    save(window, QStringLiteral("placeholders"));
}

TEST_F(WindowScreenshots, Exporting)
{
    WindowWithFakes window;
    load(window);
    window.startExport();
    save(window, QStringLiteral("exporting"));
}

TEST_F(WindowScreenshots, Complete)
{
    WindowWithFakes window;
    load(window);
    window.startExport();
    window.fakes().exports.back().task().complete("/clips/Beach day-vertical.mp4");
    save(window, QStringLiteral("complete"));
}

TEST_F(WindowScreenshots, NoticeOfExportsWhoseSourcesWereReplaced)
{
    WindowWithFakes window;
    load(window);
    window.startExport();
    load(window, "/clips/Morning.MOV");
    for (const char* message :
         {"Evening-vertical.mp4 was not exported. The tool wrote this line\nand this line\nand this one, "
          "which is "
          "long enough for a second line of the notice, and for a third\nNo space left on device",
          "Noon-vertical.mp4 was not exported. The export was cancelled.", "Saved Sunset-vertical.mp4"})
        Q_EMIT window.model().exportOfReplacedSourceEnded(QString::fromUtf8(message));
    WindowWithFakes::settle();
    save(window, QStringLiteral("notice"));
}

TEST_F(WindowScreenshots, NoticeThatScrolls)
{
    WindowWithFakes window(QSize(1, 1));
    window.window().resize(window.window().minimumSize());
    load(window);
    for (int count = 1; count <= 5; ++count) {
        window.startExport("/clips/Clip " + std::to_string(count) + "-vertical.mp4");
        load(window);
        for (int message = 1; message <= 2; ++message)
            Q_EMIT window.model().exportOfReplacedSourceEnded(
                QStringLiteral("Saved Clip %1-vertical.mp4").arg(10 * count + message));
    }
    WindowWithFakes::settle();
    window.item(QStringLiteral("messageRows")).forceActiveFocus(Qt::TabFocusReason);
    save(window, QStringLiteral("notice-full"));
}

TEST_F(WindowScreenshots, HintsAndFocus)
{
    WindowWithFakes window;
    load(window, "/clips/" + std::string(150, 'w') + ".mov");
    window.item(QStringLiteral("trimStartHandle")).forceActiveFocus(Qt::TabFocusReason);
    QTest::mouseMove(&window.window(), window.centre(QStringLiteral("status")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.hasItem(QStringLiteral("hintText")); }));
    save(window, QStringLiteral("hint"));
    QTest::mouseMove(&window.window(), window.centre(QStringLiteral("trimEndHandle")));
    window.item(QStringLiteral("audioSwitch")).forceActiveFocus(Qt::TabFocusReason);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return window.item(QStringLiteral("trimEndHandle")).property("growth").toDouble() == 1.1; }));
    save(window, QStringLiteral("hovered"));
}

TEST_F(WindowScreenshots, Failed)
{
    WindowWithFakes window;
    window.model().chooseSource();
    window.fakes().openPanel->choose("/clips/Beach day.MOV");
    WindowWithFakes::settle();
    window.fakes().inspections.back().task().fail(MediaToolError::verticalSource());
    save(window, QStringLiteral("failed"));
}

TEST_F(WindowScreenshots, CustomAtTheSmallestSizeWithALongName)
{
    WindowWithFakes window(QSize(1, 1));
    window.window().resize(window.window().minimumSize());
    load(window,
         "/clips/A rather long name of a clip that somebody took on a day at the beach, and then another "
         "one, and a third.MOV");
    window.windowModel().setAspectIndex(3);
    window.click(QStringLiteral("widthField"));
    save(window, QStringLiteral("smallest"));
    window.click(QStringLiteral("aspectPicker"));
    save(window, QStringLiteral("picker"));
}

TEST_F(WindowScreenshots, SmallestCrops)
{
    WindowWithFakes window;
    load(window);
    window.windowModel().setTopRegion(QRectF(0.2, 0.3, 0.06, 0.06));
    window.windowModel().setBottomRegion(QRectF(0.6, 0.3, 0.06, 0.72));
    save(window, QStringLiteral("smallest-crops"));
    window.windowModel().setTopRegion(QRectF(0, 0, 0.06, 0.06));
    window.windowModel().setBottomRegion(QRectF(0.94, 0.94, 0.06, 0.06));
    window.model().setSelectedCrop(1);
    save(window, QStringLiteral("smallest-crops-in-the-corners"));
}

TEST_F(WindowScreenshots, WideAndTallClips)
{
    for (const QSize size : {QSize(1920, 480), QSize(480, 1920)}) {
        WindowWithFakes window(QSize(1, 1));
        window.window().resize(window.window().minimumSize());
        MediaInfo media = WindowWithFakes::clip();
        media.width = size.width();
        media.height = size.height();
        load(window, media);
        save(window,
             size.width() > size.height() ? QStringLiteral("wide-clip") : QStringLiteral("tall-clip"));
    }
}

TEST_F(WindowScreenshots, ShortestClipAndUnknownLength)
{
    for (const double duration : {0.25, 0.0}) {
        WindowWithFakes window;
        load(window, WindowWithFakes::clip(duration));
        save(window, duration > 0 ? QStringLiteral("shortest-clip") : QStringLiteral("unknown-length"));
    }
}

} // namespace

} // namespace stackreel
