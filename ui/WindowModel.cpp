#include "ui/WindowModel.h"

#include "framing/OutputAspect.h"
#include "model/SourceFacts.h"
#include "model/TaskHandle.h"
#include "ui/geometry/TrimTimelineGeometry.h"
#include "ui/geometry/ViewGeometry.h"

#include <QLocale>

#include <algorithm>
#include <string_view>

namespace stackreel
{

namespace
{

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QRectF toRectF(const CropRegion& region)
{
    return {region.x, region.y, region.width, region.height};
}

CropRegion toCropRegion(const QRectF& rect)
{
    return {.x = rect.x(), .y = rect.y(), .width = rect.width(), .height = rect.height()};
}

} // namespace

WindowModel::WindowModel(AppModel& model, QObject* parent)
    : QObject(parent), m_model(model), m_backgroundExports(model)
{
    forwardChanges();
}

void WindowModel::forwardChanges()
{
    connect(&m_model, &AppModel::phaseChanged, this, &WindowModel::phaseChanged);
    connect(&m_model, &AppModel::phaseChanged, this, &WindowModel::phaseMessageChanged);
    connect(&m_model, &AppModel::sourceURLChanged, this, &WindowModel::phaseMessageChanged);
    connect(&m_model, &AppModel::exportOfReplacedSourceEnded, this,
            &WindowModel::exportOfReplacedSourceEnded);
    connect(&m_model, &AppModel::mediaInfoChanged, this, &WindowModel::mediaInfoChanged);
    connect(&m_model, &AppModel::playerChanged, this, &WindowModel::playerChanged);
    connect(&m_model, &AppModel::previewPlayingChanged, this, &WindowModel::previewPlayingChanged);
    connect(&m_model, &AppModel::previewMutedChanged, this, &WindowModel::previewMutedChanged);
    connect(&m_model, &AppModel::currentTimeChanged, this, &WindowModel::currentTimeChanged);
    connect(&m_model, &AppModel::trimStartChanged, this, &WindowModel::trimStartChanged);
    connect(&m_model, &AppModel::trimEndChanged, this, &WindowModel::trimEndChanged);
    connect(&m_model, &AppModel::trimStartChanged, this, &WindowModel::rangeChanged);
    connect(&m_model, &AppModel::trimEndChanged, this, &WindowModel::rangeChanged);
    connect(&m_model, &AppModel::topRegionChanged, this, &WindowModel::topRegionChanged);
    connect(&m_model, &AppModel::bottomRegionChanged, this, &WindowModel::bottomRegionChanged);
    connect(&m_model, &AppModel::selectedCropChanged, this, &WindowModel::selectedCropChanged);
    connect(&m_model, &AppModel::settingsChanged, this, &WindowModel::settingsChanged);
    connect(&m_model, &AppModel::timelineThumbnailsChanged, this, &WindowModel::timelineThumbnailsChanged);
}

WindowModel::Phase WindowModel::phase() const
{
    switch (m_model.phase().kind()) {
    case stackreel::Phase::Kind::empty:
        return Empty;
    case stackreel::Phase::Kind::preparing:
        return Preparing;
    case stackreel::Phase::Kind::ready:
        return Ready;
    case stackreel::Phase::Kind::exporting:
        return Exporting;
    case stackreel::Phase::Kind::complete:
        return Complete;
    case stackreel::Phase::Kind::failed:
        return Failed;
    }
    return Empty;
}

QString WindowModel::phaseMessage() const
{
    return toQString(m_model.phaseMessage());
}

double WindowModel::displayAspect() const
{
    return m_model.mediaInfo() ? m_model.mediaInfo()->displayAspect() : 0;
}

double WindowModel::duration() const
{
    return m_model.mediaInfo() ? m_model.mediaInfo()->duration : 0;
}

QSizeF WindowModel::displayedSize() const
{
    if (!m_model.mediaInfo())
        return {};
    return {static_cast<double>(m_model.mediaInfo()->displayedWidth()),
            static_cast<double>(m_model.mediaInfo()->displayedHeight())};
}

QString WindowModel::frameFact() const
{
    return m_model.mediaInfo() ? toQString(SourceFacts::frame(*m_model.mediaInfo())) : QString();
}

QString WindowModel::videoFact() const
{
    return m_model.mediaInfo() ? toQString(SourceFacts::video(*m_model.mediaInfo())) : QString();
}

QString WindowModel::lengthFact() const
{
    return m_model.mediaInfo() ? toQString(SourceFacts::duration(m_model.mediaInfo()->duration)) : QString();
}

QString WindowModel::rangeText() const
{
    return timeText(m_model.trimStart()) + QStringLiteral(" to ") + timeText(m_model.trimEnd());
}

QString WindowModel::selectedText() const
{
    return timeText(std::max(m_model.trimEnd() - m_model.trimStart(), 0.0)) + QStringLiteral(" selected");
}

QRectF WindowModel::topRegion() const
{
    return toRectF(m_model.topRegion());
}

void WindowModel::setTopRegion(const QRectF& region)
{
    m_model.setTopRegion(toCropRegion(region));
}

QRectF WindowModel::bottomRegion() const
{
    return toRectF(m_model.bottomRegion());
}

void WindowModel::setBottomRegion(const QRectF& region)
{
    m_model.setBottomRegion(toCropRegion(region));
}

QStringList WindowModel::aspectLabels() const
{
    QStringList labels;
    for (const OutputAspect aspect : allOutputAspects)
        labels.append(toQString(rawValue(aspect)));
    return labels;
}

void WindowModel::setAspectIndex(int index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= allOutputAspects.size())
        return;
    ExportSettings settings = m_model.settings();
    settings.aspect = allOutputAspects.at(static_cast<std::size_t>(index));
    m_model.setSettings(settings);
    m_model.adaptRegionsToCurrentOutput();
}

QString WindowModel::customWidth() const
{
    return QLocale().toString(static_cast<qlonglong>(m_model.settings().customWidth));
}

QString WindowModel::customHeight() const
{
    return QLocale().toString(static_cast<qlonglong>(m_model.settings().customHeight));
}

void WindowModel::setIncludeAudio(bool include)
{
    ExportSettings settings = m_model.settings();
    settings.includeAudio = include;
    m_model.setSettings(settings);
}

double WindowModel::panelAspect() const
{
    return stackreel::panelAspect(m_model.settings().size());
}

void WindowModel::setCustomWidth(const QString& text)
{
    setCustomSide(&ExportSettings::customWidth, text);
}

void WindowModel::setCustomHeight(const QString& text)
{
    setCustomSide(&ExportSettings::customHeight, text);
}

void WindowModel::setCustomSide(Side side, const QString& text)
{
    bool isInteger = false;
    const qlonglong value = QLocale().toLongLong(text.trimmed(), &isInteger);
    ExportSettings settings = m_model.settings();
    if (!isInteger || settings.*side == value)
        return;
    settings.*side = value;
    m_model.setSettings(settings);
    m_model.customDimensionsChanged();
}

void WindowModel::exportOrCancel()
{
    if (phase() != Exporting) {
        m_model.chooseExportDestination();
        return;
    }
    if (const auto task = m_model.exportTask())
        task->cancel();
}

QRectF WindowModel::fittedFrame(double width, double height, double aspect)
{
    const ViewRect frame = stackreel::fittedFrame({.width = width, .height = height}, aspect);
    return {frame.x, frame.y, frame.width, frame.height};
}

QString WindowModel::timeText(double seconds)
{
    return toQString(TrimTimelineGeometry::timeText(seconds));
}

} // namespace stackreel
