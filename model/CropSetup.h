#pragma once

namespace stackreel
{

class AppModel;
struct MediaInfo;

/// Keeps the model's two crop regions fitted to the shape of the output. Main thread.
class CropSetup
{
public:
    explicit CropSetup(AppModel& model) : m_model(model) {}

    /// Replaces both regions by the pair a freshly loaded source starts with.
    void configureRegions(const MediaInfo& media);
    /// Refits both regions to the output's panels; without a source, nothing.
    void adaptRegionsToCurrentOutput();
    /// The same, when the output's size is a custom one.
    void customDimensionsChanged();
    /// Exchanges the regions; the selection stays on the same picture.
    void swapCrops();

private:
    AppModel& m_model;
};

} // namespace stackreel
