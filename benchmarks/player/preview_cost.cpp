/// Loops a range of a clip for some seconds, and copies each frame once, as drawing does. Prints the
/// processor time per second, without that of the start, and the memory.
///
/// preview_cost FILE START END SECONDS WIDTH HEIGHT

#include "benchmarks/player/Measuring.h"
#include "benchmarks/player/PreviewedClip.h"

#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace stackreel;

namespace
{

/// Copies each frame instead of showing it on the screen.
class CopyingOutput : public VideoOutput
{
public:
    void present(VideoFrame frame) noexcept override
    {
        const auto row = static_cast<std::size_t>(frame.width) * 4;
        m_picture.resize(row * static_cast<std::size_t>(frame.height));
        for (int y = 0; y < frame.height; ++y)
            std::memcpy(m_picture.data() + static_cast<std::size_t>(y) * row,
                        frame.pixels + y * frame.bytesPerLine, row);
        ++m_frames;
    }
    void clear() noexcept override {}
    int frames() const { return m_frames; }

private:
    std::vector<std::byte> m_picture;
    std::atomic<int> m_frames = 0;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc != 7) {
        std::fprintf(stderr, "preview_cost FILE START END SECONDS WIDTH HEIGHT\n");
        return 2;
    }
    const double seconds = std::atof(argv[4]);
    const PreviewedClip clip(argv[1], std::atof(argv[2]), std::atof(argv[3]), std::atoi(argv[5]),
                             std::atoi(argv[6]));
    const auto output = std::make_shared<CopyingOutput>();
    clip.output->waitFor([](const auto& shown) { return !shown.empty(); }, std::chrono::minutes(1));
    clip.player->setVideoOutput(output);
    clip.player->play();
    double before = 0;
    int framesBefore = 0;
    // Do not measure the first second, in which decoders start and queues fill.
    QTimer::singleShot(1000, [&] {
        before = processorSeconds();
        framesBefore = output->frames();
        QTimer::singleShot(static_cast<int>(seconds * 1000), [] { QCoreApplication::quit(); });
    });
    application.exec();
    std::printf("cpu=%.3f fps=%.1f memory=%.0f peak=%.0f\n", (processorSeconds() - before) / seconds,
                (output->frames() - framesBefore) / seconds, residentMemory(), peakMemory());
}
