#pragma once

#include "model/AppModel.h"
#include "ui/BackgroundExportList.h"

#include <QObject>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace stackreel
{

/// Exposes `AppModel` to QML: its state converted to QML types, texts that show that state, and its
/// operations. Has no state of its own. Owned by the application; the model must outlive it. Main thread.
class WindowModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns the model.")

    Q_PROPERTY(Phase phase READ phase NOTIFY phaseChanged FINAL)
    Q_PROPERTY(bool editable READ editable NOTIFY phaseChanged FINAL)
    Q_PROPERTY(QString phaseMessage READ phaseMessage NOTIFY phaseMessageChanged FINAL)

    Q_PROPERTY(bool hasMedia READ hasMedia NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(double displayAspect READ displayAspect NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(double duration READ duration NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(QSizeF displayedSize READ displayedSize NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(QString frameFact READ frameFact NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(QString videoFact READ videoFact NOTIFY mediaInfoChanged FINAL)
    Q_PROPERTY(QString lengthFact READ lengthFact NOTIFY mediaInfoChanged FINAL)

    Q_PROPERTY(bool hasPlayer READ hasPlayer NOTIFY playerChanged FINAL)
    Q_PROPERTY(bool previewPlaying READ previewPlaying NOTIFY previewPlayingChanged FINAL)
    Q_PROPERTY(bool previewMuted READ previewMuted WRITE setPreviewMuted NOTIFY previewMutedChanged FINAL)

    Q_PROPERTY(double currentTime READ currentTime NOTIFY currentTimeChanged FINAL)
    Q_PROPERTY(double trimStart READ trimStart NOTIFY trimStartChanged FINAL)
    Q_PROPERTY(double trimEnd READ trimEnd NOTIFY trimEndChanged FINAL)
    Q_PROPERTY(QString rangeText READ rangeText NOTIFY rangeChanged FINAL)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY rangeChanged FINAL)

    Q_PROPERTY(QRectF topRegion READ topRegion WRITE setTopRegion NOTIFY topRegionChanged FINAL)
    Q_PROPERTY(QRectF bottomRegion READ bottomRegion WRITE setBottomRegion NOTIFY bottomRegionChanged FINAL)
    Q_PROPERTY(int selectedCrop READ selectedCrop WRITE setSelectedCrop NOTIFY selectedCropChanged FINAL)

    Q_PROPERTY(QStringList aspectLabels READ aspectLabels CONSTANT FINAL)
    Q_PROPERTY(int aspectIndex READ aspectIndex WRITE setAspectIndex NOTIFY settingsChanged FINAL)
    Q_PROPERTY(bool customSize READ customSize NOTIFY settingsChanged FINAL)
    Q_PROPERTY(QString customWidth READ customWidth NOTIFY settingsChanged FINAL)
    Q_PROPERTY(QString customHeight READ customHeight NOTIFY settingsChanged FINAL)
    Q_PROPERTY(bool includeAudio READ includeAudio WRITE setIncludeAudio NOTIFY settingsChanged FINAL)
    Q_PROPERTY(double panelAspect READ panelAspect NOTIFY settingsChanged FINAL)

    Q_PROPERTY(QAbstractItemModel* backgroundExports READ backgroundExports CONSTANT FINAL)

public:
    enum Phase { Empty, Preparing, Ready, Exporting, Complete, Failed };
    Q_ENUM(Phase)

    explicit WindowModel(AppModel& model, QObject* parent = nullptr);

    /// The underlying model, for views written in C++.
    AppModel& model() const { return m_model; }

    Phase phase() const;
    bool editable() const { return m_model.phase().isEditable(); }
    QString phaseMessage() const;

    bool hasMedia() const { return m_model.mediaInfo().has_value(); }
    double displayAspect() const; ///< 0 without media
    double duration() const;      ///< seconds, 0 without media
    QSizeF displayedSize() const; ///< source pixels, after rotation; empty without media
    QString frameFact() const;    ///< empty without media, as are the other facts
    QString videoFact() const;
    QString lengthFact() const;

    bool hasPlayer() const { return m_model.player() != nullptr; }
    bool previewPlaying() const { return m_model.previewPlaying(); }
    bool previewMuted() const { return m_model.previewMuted(); }
    void setPreviewMuted(bool muted) { m_model.setPreviewMuted(muted); }

    double currentTime() const { return m_model.currentTime(); }
    double trimStart() const { return m_model.trimStart(); }
    double trimEnd() const { return m_model.trimEnd(); }
    QString rangeText() const;    ///< "0:01 to 0:05"
    QString selectedText() const; ///< "0:04 selected"

    /// The regions in fractions of the displayed frame.
    QRectF topRegion() const;
    void setTopRegion(const QRectF& region);
    QRectF bottomRegion() const;
    void setBottomRegion(const QRectF& region);
    int selectedCrop() const { return m_model.selectedCrop(); }
    void setSelectedCrop(int index) { m_model.setSelectedCrop(index); }

    QStringList aspectLabels() const;
    int aspectIndex() const { return static_cast<int>(m_model.settings().aspect); }
    /// Sets the aspect ratio, then adapts the crops to it. Does nothing if the index is out of range.
    void setAspectIndex(int index);
    bool customSize() const { return m_model.settings().aspect == OutputAspect::custom; }
    QString customWidth() const; ///< formatted in the user's locale
    QString customHeight() const;
    bool includeAudio() const { return m_model.settings().includeAudio; }
    void setIncludeAudio(bool include);
    double panelAspect() const;

    QAbstractItemModel* backgroundExports() { return &m_backgroundExports; }

    /// Parses an integer in the user's locale and ignores any other text. If the value is new, stores it and
    /// adapts the crops to it.
    Q_INVOKABLE void setCustomWidth(const QString& text);
    Q_INVOKABLE void setCustomHeight(const QString& text);

    Q_INVOKABLE void chooseSource() { m_model.chooseSource(); }
    Q_INVOKABLE void swapCrops() { m_model.swapCrops(); }
    Q_INVOKABLE void togglePreviewPlayback() { m_model.togglePreviewPlayback(); }
    /// The export button: cancels the running export, or opens the save panel.
    Q_INVOKABLE void exportOrCancel();
    /// Cancels the export of a row of `backgroundExports`.
    Q_INVOKABLE void cancelBackgroundExport(int row) { m_backgroundExports.cancel(row); }
    /// The largest centred rectangle of this aspect ratio (width / height) in an area.
    Q_INVOKABLE static QRectF fittedFrame(double width, double height, double aspect);
    /// Formats a time as the timeline shows it.
    Q_INVOKABLE static QString timeText(double seconds);

Q_SIGNALS:
    void phaseChanged();
    void phaseMessageChanged();
    void mediaInfoChanged();
    void playerChanged();
    void previewPlayingChanged();
    void previewMutedChanged();
    void currentTimeChanged();
    void trimStartChanged();
    void trimEndChanged();
    void rangeChanged();
    void topRegionChanged();
    void bottomRegionChanged();
    void selectedCropChanged();
    void settingsChanged();
    void timelineThumbnailsChanged();
    void exportOfReplacedSourceEnded(const QString& message);

private:
    void forwardChanges();
    using Side = std::int64_t ExportSettings::*;
    void setCustomSide(Side side, const QString& text);

    AppModel& m_model;
    BackgroundExportList m_backgroundExports;
};

} // namespace stackreel
