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

    /// Replaces both regions by the pair that a newly loaded source starts with.
    void configureRegions(const MediaInfo& media);
    /// Fits both regions to the halves of the output. Does nothing without a source.
    void adaptRegionsToCurrentOutput();
    /// Calls `adaptRegionsToCurrentOutput` when the output's size is a custom one.
    void customDimensionsChanged();
    /// Exchanges the regions. The selection follows the selected region.
    void swapCrops();

private:
    AppModel& m_model;
};

} // namespace stackreel
